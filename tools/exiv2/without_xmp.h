// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace exiv2_tool {

/// The front of a JPEG image less its XMP packets, whose Exif data libexiv2 reads as it reads those
/// of the whole image, with the same failures: in a fraction of the time, since parsing a packet is
/// most of the work. Empty where there is no packet, or no saying what libexiv2 makes of the image.
[[nodiscard]] std::vector<std::uint8_t> withoutXmp(std::span<const std::uint8_t> bytes);

}  // namespace exiv2_tool
