#pragma once

#include <cstdint>
#include <optional>

/// Which value of a record stands for "unknown" depends on the field; here is the one place that
/// knows. Each function returns the value, or nothing when it is unknown.
namespace photoinfo {

/// Measured values that can't be negative: ISO speed, times, lengths, distances, resolutions.
[[nodiscard]] constexpr std::optional<float> knownExposure(float value) {
    return value == -1.0F ? std::nullopt : std::optional(value);
}

/// The 35 mm equivalent that the lens data have: the focal length times the crop factor, also when
/// the focal length is unknown.
[[nodiscard]] constexpr std::optional<float> knownLength(float value) {
    return value < 0.0F ? std::nullopt : std::optional(value);
}

[[nodiscard]] constexpr std::optional<float> knownBias(float value) {
    return value == -999.0F ? std::nullopt : std::optional(value);
}

/// The four values of the lens's range; a lens without a range has zeros.
[[nodiscard]] constexpr std::optional<float> knownLensValue(float value) {
    return value == 0.0F ? std::nullopt : std::optional(value);
}

/// The summary's bitsPerSample and orientation.
[[nodiscard]] constexpr std::optional<std::int32_t> knownNumber(std::int32_t value) {
    return value == 0 ? std::nullopt : std::optional(value);
}

/// Codes and numbers of which 0 is one: meteringMode, lightSource, whiteBalance, lensId.
[[nodiscard]] constexpr std::optional<std::int32_t> knownCode(std::int32_t value) {
    return value == -1 ? std::nullopt : std::optional(value);
}

/// A photo that nobody has rated; -1 is a rating, "rejected".
[[nodiscard]] constexpr std::optional<float> knownRating(float value) {
    return value == 0.0F ? std::nullopt : std::optional(value);
}

}  // namespace photoinfo
