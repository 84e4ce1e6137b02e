#pragma once

#include <cstdint>
#include <string>

/// Exif's numeric codes in words: "spot", or "code 77" for one that Exif doesn't define. The values
/// by which the summary says "unknown" are not for these functions.
namespace photoinfo {

[[nodiscard]] std::string meteringModeName(std::int32_t code);
[[nodiscard]] std::string lightSourceName(std::int32_t code);
[[nodiscard]] std::string whiteBalanceName(std::int32_t code);
[[nodiscard]] std::string exposureProgramName(std::int32_t code);
/// What has to be done to see the picture upright.
[[nodiscard]] std::string orientationName(std::int32_t code);

}  // namespace photoinfo
