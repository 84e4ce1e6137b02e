// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace exiv2_tool {

/// A marker of a JPEG image with what belongs to it.
struct JpegSegment {
    static constexpr std::uint8_t kStartOfScan = 0xDA;
    static constexpr std::uint8_t kQuantizationTables = 0xDB;
    static constexpr std::uint8_t kRestartInterval = 0xDD;
    static constexpr std::uint8_t kApplicationData1 = 0xE1;
    static constexpr std::uint8_t kComment = 0xFE;

    /// The marker's second byte.
    std::uint8_t marker = 0;
    /// From the marker's first byte to the segment's last.
    std::span<const std::uint8_t> bytes;

    /// What stands behind marker and length.
    [[nodiscard]] std::span<const std::uint8_t> content() const { return bytes.subspan(4); }
    [[nodiscard]] bool isApplicationData() const { return (marker & 0xF0U) == 0xE0; }
    /// A frame header, or tables whose markers lie among those of frame headers.
    [[nodiscard]] bool isFrameOrTables() const { return (marker & 0xF0U) == 0xC0; }
};

/// Walks the segments at the front of a JPEG image, of which each has a length.
class JpegSegments {
public:
    explicit JpegSegments(std::span<const std::uint8_t> bytes);

    /// The next one. None where the image, or its metadata, ends, or where it is damaged. Isn't to
    /// be asked again behind the start of a scan: pixels follow.
    [[nodiscard]] std::optional<JpegSegment> next();

private:
    std::span<const std::uint8_t> rest_;  // empty when the image doesn't begin as one
};

}  // namespace exiv2_tool
