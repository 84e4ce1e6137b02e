#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// Slow second versions of the library's text rules, by the C library's conversions and the classic
/// locale.
namespace test_support {

/// An optional sign and decimal digits, nothing else; modulo 2^64.
[[nodiscard]] std::optional<std::int64_t> literalInteger(const std::string& text);

/// The number at the beginning of a text; no C locale with another decimal point may be set. None
/// where there is no number, or where it overflows or becomes 0 by being too small.
[[nodiscard]] std::optional<double> literalDouble(const std::string& text);
[[nodiscard]] std::optional<float> literalFloat(const std::string& text);

[[nodiscard]] std::string literalTrim(const std::string& text);
[[nodiscard]] std::string literalLower(std::string text);
[[nodiscard]] bool isClassicSpace(char c);

}  // namespace test_support
