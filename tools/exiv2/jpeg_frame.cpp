// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/jpeg_frame.h"

#include <cstddef>

#include "exiv2/jpeg_segments.h"

namespace exiv2_tool {
namespace {

constexpr std::size_t kFrameHeaderSize = 6;  // precision, height, width, components

bool isFrame(const JpegSegment& segment) {
    // 0xC4, 0xC8 and 0xCC hold tables.
    return segment.isFrameOrTables() && segment.marker != 0xC4 && segment.marker != 0xC8 &&
           segment.marker != 0xCC && segment.content().size() >= kFrameHeaderSize;
}

std::uint32_t bigEndian(std::span<const std::uint8_t> bytes) {
    return bytes[0] * 256U + bytes[1];
}

}  // namespace

std::optional<PixelSize> jpegFrameSize(std::span<const std::uint8_t> bytes) {
    PixelSize frame;
    JpegSegments segments(bytes);
    while (const std::optional<JpegSegment> segment = segments.next()) {
        if (segment->marker == JpegSegment::kStartOfScan) {
            return frame.width > 0 && frame.height > 0 ? std::optional(frame) : std::nullopt;
        }
        if (isFrame(*segment)) {
            frame = {bigEndian(segment->content().subspan(3)),
                     bigEndian(segment->content().subspan(1))};
        }
    }
    return std::nullopt;
}

}  // namespace exiv2_tool
