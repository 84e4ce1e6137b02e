// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "exiv2/preview_choice.h"

namespace exiv2_tool {

/// The size of the image that a preview's bytes hold; none when they don't hold one. Files exist
/// whose preview is announced but was cut out, and a header without pixels serves nobody. A JPEG
/// image counts by its frame header, a TIFF image only when its pixels are there; other formats
/// have the `announced` size.
[[nodiscard]] std::optional<PixelSize> payloadSize(std::span<const std::uint8_t> bytes,
                                                   std::string_view mimeType, PixelSize announced);

}  // namespace exiv2_tool
