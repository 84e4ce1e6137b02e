// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/payload.h"

#include <gtest/gtest.h>

#include <utility>

#include "exiv2/made_photo.h"

namespace exiv2_tool {
namespace {

constexpr std::uint32_t kPixels = 200;  // where makeTiff puts the pixels
constexpr PixelSize kSize = {10, 6};

void appendNumber(Bytes& bytes, std::uint32_t number, int size) {
    for (int i = 0; i < size; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
    }
}

/// A TIFF image of kSize in one strip.
Bytes makeTiff(std::uint32_t compression, std::uint32_t photometric, std::uint32_t samples,
               const Bytes& pixels, std::uint32_t bits = 8) {
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> tags = {
        {256, kSize.width}, {257, kSize.height}, {258, bits},
        {259, compression}, {262, photometric},  {273, kPixels},
        {277, samples},     {278, kSize.height}, {279, static_cast<std::uint32_t>(pixels.size())}};
    Bytes bytes = {'I', 'I', 42, 0, 8, 0, 0, 0};
    appendNumber(bytes, static_cast<std::uint32_t>(tags.size()), 2);
    for (const auto& [tag, value] : tags) {
        appendNumber(bytes, tag, 2);
        appendNumber(bytes, 4, 2);  // a 32-bit number
        appendNumber(bytes, 1, 4);
        appendNumber(bytes, value, 4);
    }
    bytes.resize(kPixels);
    bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    return bytes;
}

/// The same image in one tile: the tags of its place and size are others.
Bytes tiled(Bytes tiff) {
    constexpr std::size_t kEntries = 10;
    constexpr std::size_t kEntry = 12;
    for (std::size_t at = kEntries; at < kEntries + 9 * kEntry; at += kEntry) {
        const int tag = tiff[at] | (tiff[at + 1] << 8);
        if (tag == 273 || tag == 279) {
            tiff[at] = tag == 273 ? 0x44 : 0x45;  // 324 and 325
        }
    }
    return tiff;
}

struct TiffCase {
    const char* name;
    Bytes bytes;
    bool holdsAnImage;
};

class TiffPayload : public ::testing::TestWithParam<TiffCase> {};

TEST_P(TiffPayload, CountsOnlyWithItsPixels) {
    const std::optional<PixelSize> size = payloadSize(GetParam().bytes, "image/tiff", kSize);

    EXPECT_EQ(size, GetParam().holdsAnImage ? std::optional(kSize) : std::nullopt);
}

Bytes cut(Bytes bytes) {
    bytes.pop_back();
    return bytes;
}

const TiffCase kTiffCases[] = {
    {"AllPixels", makeTiff(1, 2, 3, Bytes(180)), true},
    {"OnePixelByteLess", makeTiff(1, 2, 3, Bytes(179)), false},
    {"AllPixelsInATile", tiled(makeTiff(1, 2, 3, Bytes(180))), true},
    {"OnePixelByteLessInATile", tiled(makeTiff(1, 2, 3, Bytes(179))), false},
    {"AnnouncedButCutOff", cut(makeTiff(1, 2, 3, Bytes(180))), false},
    {"BrightnessOfAllPixels", makeTiff(1, 6, 3, Bytes(60)), true},
    {"BrightnessOfFewerPixels", makeTiff(1, 6, 3, Bytes(59)), false},
    {"TooManySamples", makeTiff(1, 2, 0xFFFFFFFF, Bytes(180)), false},
    {"NoSamples", makeTiff(1, 2, 0, Bytes(180)), false},
    {"MostSamples", makeTiff(1, 2, 0xFFFF, Bytes(491514), 1), true},
    {"OneSampleMore", makeTiff(1, 2, 0x10000, Bytes(500000), 1), false},
    {"MostBits", makeTiff(1, 2, 1, Bytes(480), 64), true},
    {"MostBitsButOnePixelByteLess", makeTiff(1, 2, 1, Bytes(479), 64), false},
    {"OneBitMore", makeTiff(1, 2, 1, Bytes(1000), 65), false},
    {"JpegInside", makeTiff(7, 6, 3, makeJpeg(kSize)), true},
    {"NoJpegInside", makeTiff(7, 6, 3, Bytes(100)), false},
    {"NoOldJpegInside", makeTiff(6, 6, 3, Bytes(100)), false},
    {"Packed", makeTiff(5, 2, 3, Bytes(20)), true},
    {"NothingPacked", makeTiff(5, 2, 3, {}), false},
};

INSTANTIATE_TEST_SUITE_P(Table, TiffPayload, ::testing::ValuesIn(kTiffCases),
                         [](const auto& row) { return row.param.name; });

// Its size is a number beyond 64 bits.
TEST(Payload, OfATiffIsNoneWhereTheLargestImageIsAnnounced) {
    constexpr PixelSize kLargest = {0xFFFFFFFF, 0xFFFFFFFF};
    EXPECT_EQ(payloadSize(makeTiff(1, 2, 0xFFFF, Bytes(180), 64), "image/tiff", kLargest),
              std::nullopt);
}

TEST(Payload, OfAJpegHasTheSizeInItsFrame) {
    EXPECT_EQ(payloadSize(makeJpeg({16, 8}), "image/jpeg", {99, 99}), (PixelSize{16, 8}));
}

TEST(Payload, OfAnotherFormatHasTheAnnouncedSize) {
    EXPECT_EQ(payloadSize(Bytes{'P', '6'}, "image/x-portable-pixmap", kSize), kSize);
    EXPECT_EQ(payloadSize(Bytes{'P', '6'}, "image/x-portable-pixmap", {0, 6}), std::nullopt);
    EXPECT_EQ(payloadSize(Bytes{}, "image/x-portable-pixmap", kSize), std::nullopt);
}

}  // namespace
}  // namespace exiv2_tool
