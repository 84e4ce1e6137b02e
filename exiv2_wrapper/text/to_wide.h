#pragma once

#include <span>
#include <string>
#include <string_view>

namespace exiv2_wp::internal {

/// A conversion with the contract of `widenUtf8` in path_text.h.
using WidenFunction = int (*)(std::string_view utf8, std::span<wchar_t> wide);

/// UTF-8 to wide text by the platform's conversion. Never fails: text that the platform refuses is
/// widened byte by byte, each byte as a signed character, so that 0x80 becomes U+FF80.
[[nodiscard]] std::wstring toWide(const std::string& utf8);

/// The same with another conversion in the platform's place. An empty text never reaches it.
[[nodiscard]] std::wstring toWideBy(WidenFunction widen, const std::string& utf8);

}  // namespace exiv2_wp::internal
