#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "exiv2_wrapper/model/cli_exif_metadata.h"

/// How the exported readers take a number out of a tag. Each returns no value where the tag holds
/// nothing readable.
namespace exiv2_wp::internal {

/// The integer rule: the first of `integers`, else the whole `value` text by the one number rule;
/// accepted only within 32 bits.
[[nodiscard]] std::optional<std::int32_t> readInt(const CliExifTag& tag);

/// The real rule: the first of `rationals` divided in double precision, else the first of
/// `integers`, else the number at the beginning of the `value` text. A denominator of 0 gives the
/// numerator.
[[nodiscard]] std::optional<double> readDouble(const CliExifTag& tag);

/// The real rule, rounded to a float; an integer is rounded once, straight to float.
[[nodiscard]] std::optional<float> readFloat(const CliExifTag& tag);

/// A rational in single precision; the numerator when the denominator is 0.
[[nodiscard]] float toFloat(const std::pair<std::int64_t, std::int64_t>& rational);

}  // namespace exiv2_wp::internal
