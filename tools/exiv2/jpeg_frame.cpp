// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/jpeg_frame.h"

#include <cstddef>

namespace exiv2_tool {
namespace {

constexpr std::uint8_t kMarker = 0xFF;
constexpr std::uint8_t kStartOfImage = 0xD8;
constexpr std::uint8_t kEndOfImage = 0xD9;
constexpr std::uint8_t kStartOfScan = 0xDA;
constexpr std::size_t kFrameHeaderSize = 8;  // length, precision, height, width, components

bool startsFrame(std::uint8_t marker) {
    // 0xC4, 0xC8 and 0xCC lie among the frame markers but hold tables.
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

bool standsAlone(std::uint8_t marker) {
    return marker == 0x01 || (marker >= 0xD0 && marker <= kEndOfImage);
}

std::uint32_t bigEndian(std::span<const std::uint8_t> bytes) {
    return bytes[0] * 256U + bytes[1];
}

}  // namespace

std::optional<PixelSize> jpegFrameSize(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < 2 || bytes[0] != kMarker || bytes[1] != kStartOfImage) {
        return std::nullopt;
    }
    PixelSize frame;
    std::span<const std::uint8_t> rest = bytes.subspan(2);
    while (rest.size() >= 4 && rest[0] == kMarker) {
        const std::uint8_t marker = rest[1];
        if (marker == kMarker) {  // a fill byte
            rest = rest.subspan(1);
            continue;
        }
        if (standsAlone(marker)) {
            return std::nullopt;
        }
        const std::size_t length = bigEndian(rest.subspan(2));
        if (length < 2 || length > rest.size() - 2) {
            return std::nullopt;
        }
        const std::span<const std::uint8_t> segment = rest.subspan(2, length);
        if (marker == kStartOfScan) {
            return frame.width > 0 && frame.height > 0 ? std::optional(frame) : std::nullopt;
        }
        if (startsFrame(marker) && length >= kFrameHeaderSize) {
            frame = {bigEndian(segment.subspan(5)), bigEndian(segment.subspan(3))};
        }
        rest = rest.subspan(2 + length);
    }
    return std::nullopt;
}

}  // namespace exiv2_tool
