// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/jpeg_frame.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <string>

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

// A photo with four bytes more before its frame.
Bytes makeJpegWith(std::initializer_list<std::uint8_t> segment) {
    Bytes bytes = makeJpeg({16, 8});
    bytes.insert(bytes.begin() + kFrameStart, segment);
    return bytes;
}

TEST(JpegFrame, KnowsThirteenMarkersOfAFrame) {
    std::string markers;
    for (int marker = 0; marker < 256; ++marker) {
        Bytes bytes = makeJpeg({16, 8});
        bytes[kFrameStart + 1] = static_cast<std::uint8_t>(marker);
        if (jpegFrameSize(bytes) == PixelSize{16, 8}) {
            markers += static_cast<char>(marker);
        }
    }
    EXPECT_EQ(markers, "\xC0\xC1\xC2\xC3\xC5\xC6\xC7\xC9\xCA\xCB\xCD\xCE\xCF");
}

TEST(JpegFrame, TakesAnEmptySegmentForOne) {
    for (const std::uint8_t marker : Bytes{0x02, 0xBF, 0xC4, 0xCC, 0xDB, 0xEF, 0xFE}) {
        EXPECT_EQ(jpegFrameSize(makeJpegWith({0xFF, marker, 0, 2})), (PixelSize{16, 8}))
            << static_cast<int>(marker);
    }
}

// What follows such a marker is no segment, even where it looks like one.
TEST(JpegFrame, KnowsNoImageWithAMarkerThatStandsAloneBeforeTheFrame) {
    for (const std::uint8_t marker : Bytes{0x01, 0xD0, 0xD7, 0xD8, 0xD9}) {
        EXPECT_EQ(jpegFrameSize(makeJpegWith({0xFF, marker, 0, 2})), std::nullopt)
            << static_cast<int>(marker);
    }
}

TEST(JpegFrame, TakesAFrameWithoutComponentsForOneAndNoShorterFrame) {
    Bytes bytes = makeJpeg({16, 8});
    bytes[kFrameStart + 3] = 8;
    bytes.erase(bytes.begin() + kFrameStart + 10, bytes.begin() + kFrameStart + 13);
    EXPECT_EQ(jpegFrameSize(bytes), (PixelSize{16, 8}));
    bytes[kFrameStart + 3] = 7;
    bytes.erase(bytes.begin() + kFrameStart + 9);
    EXPECT_EQ(jpegFrameSize(bytes), std::nullopt);
}

TEST(JpegFrame, KnowsNoImageWhoseScanHeaderHasNoLength) {
    Bytes bytes = makeJpeg({16, 8});
    std::uint8_t& length = bytes.end()[-10];  // of the scan's header
    length = 1;
    EXPECT_EQ(jpegFrameSize(bytes), std::nullopt);
    length = 2;
    EXPECT_EQ(jpegFrameSize(bytes), (PixelSize{16, 8}));
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
