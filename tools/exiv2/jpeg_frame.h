// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "exiv2/preview_choice.h"

namespace exiv2_tool {

/// The size of a JPEG image by its frame header; none unless the bytes begin as a JPEG image, hold
/// a frame header with both sides above 0 and go on to the start of a scan.
[[nodiscard]] std::optional<PixelSize> jpegFrameSize(std::span<const std::uint8_t> bytes);

}  // namespace exiv2_tool
