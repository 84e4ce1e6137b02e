// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/without_xmp.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <sstream>

#include "exiv2/libexiv2.h"
#include "exiv2/made_photo.h"
#include "support/every_nth.h"
#include "support/read_file.h"

namespace exiv2_tool {
namespace {

Bytes bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

/// A segment of the application's kind 1: XMP with this packet.
Bytes xmpSegment(const std::string& packet) {
    using namespace std::string_literals;
    const std::string content = "http://ns.adobe.com/xap/1.0/\0"s + packet;
    const std::size_t length = content.size() + 2;
    Bytes segment{0xFF, 0xE1, static_cast<std::uint8_t>(length >> 8U),
                  static_cast<std::uint8_t>(length)};
    segment.insert(segment.end(), content.begin(), content.end());
    return segment;
}

/// The image with a segment before all others.
Bytes withSegment(Bytes image, const Bytes& segment) {
    image.insert(image.begin() + 2, segment.begin(), segment.end());
    return image;
}

/// What libexiv2 reads as Exif data; none when it can't read the image.
std::optional<std::string> exifDataOf(const Bytes& bytes) {
    try {
        const ImagePointer image = openImage(bytes);
        image->readMetadata();
        std::ostringstream text;
        text << image->byteOrder() << '\n';
        for (const Exiv2::Exifdatum& entry : image->exifData()) {
            text << entry.key() << ' ' << entry.value() << '\n';
        }
        return text.str();
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

TEST(WithoutXmp, LeavesOutThePacketAndWhatFollowsTheHeaderOfTheScan) {
    const Bytes image = makeJpeg({64, 48});
    const Bytes front = withoutXmp(withSegment(image, xmpSegment("<packet/>")));

    ASSERT_LT(front.size(), image.size());
    EXPECT_TRUE(std::equal(front.begin(), front.end(), image.begin()));
    EXPECT_EQ(image[front.size() - 10], 0xFF);  // the scan's header, whole
    EXPECT_EQ(image[front.size() - 9], 0xDA);
}

TEST(WithoutXmp, LeavesOutEveryPacket) {
    const Bytes image = makeJpeg({64, 48});
    const Bytes one = withSegment(image, xmpSegment("<one/>"));

    EXPECT_EQ(withoutXmp(withSegment(one, xmpSegment("<two/>"))), withoutXmp(one));
}

TEST(WithoutXmp, KeepsOtherSegmentsOfTheSameMarker) {
    Bytes other = xmpSegment("<packet/>");
    other[4] = 'H';
    const Bytes image = withSegment(makeJpeg({64, 48}), xmpSegment("<packet/>"));

    EXPECT_EQ(withoutXmp(withSegment(image, other)), withSegment(withoutXmp(image), other));
}

TEST(WithoutXmp, HasNothingToSayAboutAnImageWithoutAPacket) {
    EXPECT_TRUE(withoutXmp(makeJpeg({64, 48})).empty());
    EXPECT_TRUE(withoutXmp(withSegment(makeJpeg({64, 48}), {0xFF, 0xE1, 0, 4, 'h', 't'})).empty());
}

// With a comment libexiv2 may have met all that it looks for before the scan: what is damaged
// behind that is no failure then, and would be one if the packet were missing.
TEST(WithoutXmp, LeavesAnImageWithACommentAlone) {
    const Bytes image = withSegment(makeJpeg({64, 48}), xmpSegment("<packet/>"));

    EXPECT_TRUE(withoutXmp(withSegment(image, {0xFF, 0xFE, 0, 4, 'h', 'i'})).empty());
}

TEST(WithoutXmp, LeavesAnImageWithUnusualSegmentsAlone) {
    const Bytes image = withSegment(makeJpeg({64, 48}), xmpSegment("<packet/>"));
    for (const unsigned marker :
         {0x00U, 0x01U, 0x02U, 0xBFU, 0xD0U, 0xD8U, 0xDCU, 0xDFU, 0xF0U, 0xFDU}) {
        const Bytes segment{0xFF, static_cast<std::uint8_t>(marker), 0, 4, 0, 0};
        EXPECT_TRUE(withoutXmp(withSegment(image, segment)).empty()) << marker;
    }
}

TEST(WithoutXmp, LeavesAnImageAloneThatIsCutOffBeforeItsScan) {
    const Bytes whole = withSegment(makeJpeg({64, 48}), xmpSegment("<packet/>"));
    const std::size_t front = withoutXmp(whole).size() + xmpSegment("<packet/>").size();
    for (std::size_t size = 0; size < front; ++size) {
        // A copy of that very size, so that a sanitizer sees every byte read behind it.
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_TRUE(withoutXmp(cut).empty()) << size;
    }
}

TEST(WithoutXmp, LeavesTheSamplesExifDataAsTheyAre) {
    const Bytes sample = bytesOf(test_support::readFile(SAMPLE));

    EXPECT_EQ(exifDataOf(withoutXmp(sample)), exifDataOf(sample));
}

TEST(WithoutXmp, LeavesDamagedExifDataAsTheyAre) {
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    const Bytes sample = bytesOf(test_support::readFile(SAMPLE));
    std::mt19937 random(20261122);
    int compared = 0;
    for (int round = 0; round < 400 / test_support::kEveryNthInput; ++round) {
        Bytes damaged = sample;
        for (int change = 0; change <= round % 4; ++change) {
            damaged[random() % sample.size()] = static_cast<std::uint8_t>(random());
        }
        if (const Bytes shorter = withoutXmp(damaged); !shorter.empty()) {
            ++compared;
            EXPECT_EQ(exifDataOf(shorter), exifDataOf(damaged)) << round;
        }
    }
    EXPECT_GT(compared, 100 / test_support::kEveryNthInput);
}

}  // namespace
}  // namespace exiv2_tool
