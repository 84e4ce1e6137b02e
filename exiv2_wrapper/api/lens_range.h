#pragma once

#include <optional>
#include <string_view>

namespace exiv2_wp::internal {

/// A zoom range as it stands in a lens model: the digits of both focal lengths, views into it.
struct LensRange {
    std::string_view shortest;
    std::string_view longest;
};

/// The first match in `lensModel` of the pattern (\d+)[-–](\d+)\s*mm, letter case ignored, matched
/// byte by byte: the dash is a hyphen or any single one of the three bytes of a UTF-8 en dash, so a
/// true en dash is no match, which is kept as it is. Takes time linear in the text and no stack
/// that grows with it, which the standard's regular expressions don't promise.
[[nodiscard]] std::optional<LensRange> findLensRange(std::string_view lensModel);

}  // namespace exiv2_wp::internal
