// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/preview_choice.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace exiv2_tool {
namespace {

std::uint32_t longerSide(const PixelSize& size) {
    return std::max(size.width, size.height);
}

std::pair<std::uint32_t, std::uint64_t> rank(const PixelSize& size) {
    return {longerSide(size), std::uint64_t{size.width} * size.height};
}

}  // namespace

std::vector<std::size_t> previewOrder(std::span<const PixelSize> sizes, std::uint32_t wanted) {
    std::vector<std::size_t> order(sizes.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto small = std::stable_partition(order.begin(), order.end(), [&](std::size_t index) {
        return longerSide(sizes[index]) >= wanted;
    });
    std::stable_sort(order.begin(), small, [&](std::size_t left, std::size_t right) {
        return rank(sizes[left]) < rank(sizes[right]);
    });
    std::stable_sort(small, order.end(), [&](std::size_t left, std::size_t right) {
        return rank(sizes[left]) > rank(sizes[right]);
    });
    return order;
}

}  // namespace exiv2_tool
