// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/preview_choice.h"

#include <gtest/gtest.h>

namespace exiv2_tool {
namespace {

using Order = std::vector<std::size_t>;

struct PreviewOrderCase {
    const char* name;
    std::vector<PixelSize> sizes;
    std::uint32_t wanted;
    Order order;
};

class PreviewOrder : public ::testing::TestWithParam<PreviewOrderCase> {};

TEST_P(PreviewOrder, PutsTheSmallestLargeEnoughFirstThenTheLargest) {
    EXPECT_EQ(previewOrder(GetParam().sizes, GetParam().wanted), GetParam().order);
}

const PreviewOrderCase kPreviewOrders[] = {
    {"None", {}, 100, {}},
    {"ExactlyTheWantedSize", {{1600, 1200}, {160, 120}, {640, 480}}, 640, {2, 0, 1}},
    {"OnePixelMore", {{1600, 1200}, {160, 120}, {640, 480}}, 641, {0, 2, 1}},
    {"AllTooSmall", {{160, 120}, {1600, 1200}, {640, 480}}, 4000, {1, 2, 0}},
    {"AllLargeEnough", {{1600, 1200}, {160, 120}, {640, 480}}, 1, {1, 2, 0}},
    {"TheLongerSideCounts", {{120, 640}, {600, 600}}, 640, {0, 1}},
    {"TheAreaDecidesAmongLargeOnes", {{640, 480}, {640, 427}}, 100, {1, 0}},
    {"TheAreaDecidesAmongSmallOnes", {{640, 427}, {640, 480}}, 1000, {1, 0}},
    {"TheFirstOfEqualOnes", {{640, 480}, {480, 640}, {640, 480}}, 640, {0, 1, 2}},
    {"TheFirstOfEqualSmallOnes", {{640, 480}, {480, 640}, {640, 480}}, 1000, {0, 1, 2}},
    {"AreasBeyond32Bits", {{70000, 70000}, {70000, 61357}}, 1, {1, 0}},
    {"UnknownSizesAreLast", {{0, 0}, {8, 8}}, 100, {1, 0}},
};

INSTANTIATE_TEST_SUITE_P(Table, PreviewOrder, ::testing::ValuesIn(kPreviewOrders),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace exiv2_tool
