// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/jpeg_frame.h"

#include <gtest/gtest.h>

#include <random>

#include "exiv2/made_photo.h"

namespace exiv2_tool {
namespace {

constexpr std::size_t kFrameStart = 2 + 69;  // behind the start of image and the one table

TEST(JpegFrame, TellsTheSizeOfAnImage) {
    EXPECT_EQ(jpegFrameSize(makeJpeg({640, 427})), (PixelSize{640, 427}));
    EXPECT_EQ(jpegFrameSize(makeJpeg({1, 1})), (PixelSize{1, 1}));
}

TEST(JpegFrame, SkipsFillBytesBeforeAMarker) {
    Bytes bytes = makeJpeg({16, 8});
    bytes.insert(bytes.begin() + kFrameStart, {0xFF, 0xFF});

    EXPECT_EQ(jpegFrameSize(bytes), (PixelSize{16, 8}));
}

TEST(JpegFrame, ReadsAProgressiveImage) {
    Bytes bytes = makeJpeg({16, 8});
    bytes[kFrameStart + 1] = 0xC2;

    EXPECT_EQ(jpegFrameSize(bytes), (PixelSize{16, 8}));
}

TEST(JpegFrame, KnowsNoImageWithoutAFrame) {
    Bytes bytes = makeJpeg({16, 8});
    bytes[kFrameStart + 1] = 0xC4;  // a table now

    EXPECT_EQ(jpegFrameSize(bytes), std::nullopt);
}

TEST(JpegFrame, KnowsNoImageWithoutASide) {
    EXPECT_EQ(jpegFrameSize(makeJpeg({0, 8})), std::nullopt);
    EXPECT_EQ(jpegFrameSize(makeJpeg({8, 0})), std::nullopt);
}

TEST(JpegFrame, KnowsNoImageThatIsCutOffBeforeItsScan) {
    const Bytes whole = makeJpeg({16, 8});
    const std::size_t scanHeaderEnd = whole.size() - 2 - 1;  // one byte of scan, the end marker
    for (std::size_t size = 0; size < scanHeaderEnd; ++size) {
        // A copy of that very size, so that a sanitizer sees every byte read behind it.
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(jpegFrameSize(cut), std::nullopt) << size;
    }
    EXPECT_TRUE(jpegFrameSize(Bytes(whole.begin(), whole.end() - 3)).has_value());
}

TEST(JpegFrame, BearsAnyBytes) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 20000; ++round) {
        Bytes bytes = makeJpeg({16, 8});
        for (int change = 0; change < 4; ++change) {
            bytes[2 + random() % (bytes.size() - 2)] = static_cast<std::uint8_t>(random());
        }
        const std::optional<PixelSize> size = jpegFrameSize(bytes);
        EXPECT_TRUE(!size || (size->width > 0 && size->height > 0));
    }
}

}  // namespace
}  // namespace exiv2_tool
