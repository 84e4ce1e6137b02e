// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/jpeg_segments.h"

#include <cstddef>

namespace exiv2_tool {
namespace {

constexpr std::uint8_t kMarker = 0xFF;
constexpr std::uint8_t kStartOfImage = 0xD8;
constexpr std::uint8_t kEndOfImage = 0xD9;

bool standsAlone(std::uint8_t marker) {
    return marker == 0x01 || (marker >= 0xD0 && marker <= kEndOfImage);
}

}  // namespace

JpegSegments::JpegSegments(std::span<const std::uint8_t> bytes) {
    if (bytes.size() >= 2 && bytes[0] == kMarker && bytes[1] == kStartOfImage) {
        rest_ = bytes.subspan(2);
    }
}

std::optional<JpegSegment> JpegSegments::next() {
    while (rest_.size() >= 2 && rest_[0] == kMarker && rest_[1] == kMarker) {  // a fill byte
        rest_ = rest_.subspan(1);
    }
    if (rest_.size() < 4 || rest_[0] != kMarker || standsAlone(rest_[1])) {
        return std::nullopt;
    }
    const std::size_t length = rest_[2] * 256U + rest_[3];  // its own two bytes among it
    if (length < 2 || length > rest_.size() - 2) {
        return std::nullopt;
    }
    const JpegSegment segment{rest_[1], rest_.first(2 + length)};
    rest_ = rest_.subspan(2 + length);
    return segment;
}

}  // namespace exiv2_tool
