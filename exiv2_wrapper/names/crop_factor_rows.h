#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace exiv2_wp::internal {

/// One row of the crop-factor list.
struct CropFactorRow {
    std::string_view model;  ///< maker and model as the list spells them; UTF-8
    float cropFactor;        ///< 1.00 for a full-frame sensor, more for a smaller one
};

inline constexpr std::size_t kCropFactorRowCount = 457;

/// The list in its order. It names eleven models twice: the first row of a model counts.
[[nodiscard]] std::span<const CropFactorRow, kCropFactorRowCount> cropFactorRows();

}  // namespace exiv2_wp::internal
