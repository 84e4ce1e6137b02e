// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "reader/preview_choice.h"

namespace exiv2_companion {

/// How a failed comparison shows a size.
void PrintTo(const PixelSize& size, std::ostream* stream);

}  // namespace exiv2_companion

/// Photos made for a test, so that most tests need none of a camera's.
namespace companion_tests {

using Bytes = std::vector<std::uint8_t>;

/// A grey JPEG image that any decoder shows.
Bytes makeJpeg(exiv2_companion::PixelSize size);

struct PhotoContents {
    std::string lens = {};  ///< Exif.Photo.LensModel
    Bytes thumbnail = {};   ///< the Exif thumbnail
    Bytes larger = {};      ///< the preview in the XMP packet, announced there as 640 by 640
};

/// Makes a JPEG photo at `file`.
void makePhoto(const std::filesystem::path& file, const PhotoContents& contents);

}  // namespace companion_tests
