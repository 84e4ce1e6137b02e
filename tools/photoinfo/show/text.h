#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace photoinfo {

/// Shown in place of a value that nobody knows.
inline constexpr auto kUnknown = "unknown";

/// Text from a file or a command line, safe to show: well-formed UTF-8 on one line. Malformed
/// bytes, control characters and characters that change the direction of writing each become
/// U+FFFD, so that no photo can steer a terminal or disguise what is shown.
[[nodiscard]] std::string printable(std::string_view text);

/// The number of characters, of well-formed UTF-8.
[[nodiscard]] std::size_t lengthOf(std::string_view text);

/// The value with at most two decimals and none that are zero: "2.8", "100", "-0.33"; "inf" and
/// "nan" for what isn't finite.
[[nodiscard]] std::string decimal(double value);

/// The double whose shortest decimal form is that of `value`: 0.004 for 0.004F, not
/// 0.00400000018998980522.
[[nodiscard]] double sameDecimal(float value);

}  // namespace photoinfo
