#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace exiv2_wp::internal {

/// Reads the bytes of a hexadecimal dump: every hexadecimal digit of `text`, in order, two a byte,
/// the high half first. Whatever else stands in the text is skipped, but the column of a dump isn't
/// looked at: letters a to f of its text column count too, and may add bytes or make the number of
/// digits odd. It has to stay so for the results to stay the same.
/// False, with `bytes` empty, when there are no digits or their number is odd.
[[nodiscard]] bool decodeHexDump(std::string_view text, std::vector<std::uint8_t>& bytes);

}  // namespace exiv2_wp::internal
