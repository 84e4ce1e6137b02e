// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace exiv2_tool {

/// Width and height in pixels.
struct PixelSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;

    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

/// The order in which previews of these sizes answer a wish for `wanted` pixels on the longer side:
/// first those whose longer side is at least that, the smallest of them first, then the others, the
/// largest first. Of equal longer sides the area decides, then the order given.
[[nodiscard]] std::vector<std::size_t> previewOrder(std::span<const PixelSize> sizes,
                                                    std::uint32_t wanted);

}  // namespace exiv2_tool
