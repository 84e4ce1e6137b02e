#pragma once

#include <optional>
#include <string>
#include <utility>

/// Slow second versions of what the library finds in texts, by std::regex. Its engine recurses, so
/// keep the texts short.
namespace test_support {

/// The short and the long end of the first range in a lens model; none without a range.
[[nodiscard]] std::optional<std::pair<std::string, std::string>> literalLensRange(
    const std::string& lensModel);

/// Whether a text begins with a date and a time as Exif writes them, whatever parts the numbers.
[[nodiscard]] bool literalHasDate(const std::string& text);

/// Whether a text begins with an offset from UTC such as +02:00.
[[nodiscard]] bool literalHasOffset(const std::string& text);

}  // namespace test_support
