#pragma once

#include <span>
#include <string>

namespace photoinfo {

/// The bytes in Base64, as data: addresses have them.
[[nodiscard]] std::string toBase64(std::span<const unsigned char> bytes);

}  // namespace photoinfo
