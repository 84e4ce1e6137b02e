// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "exiv2/libexiv2.h"
#include "exiv2/preview_choice.h"

/// Photos made for a test, so that most tests need none of a camera's.
namespace exiv2_tool {

/// How a failed comparison shows a size.
void PrintTo(const PixelSize& size, std::ostream* stream);

using Bytes = std::vector<std::uint8_t>;

/// A grey JPEG image that any decoder shows.
Bytes makeJpeg(PixelSize size);

struct PhotoContents {
    /// Exif entries by key, with their values as text; "Exif.Image.Make" is always there.
    std::map<std::string, std::string> tags = {};
    Bytes thumbnail = {};  ///< the Exif thumbnail
    Bytes larger = {};     ///< the preview in the XMP packet, announced there as 640 by 640
};

/// The bytes of a JPEG photo.
std::string photoBytes(const PhotoContents& contents);

/// The bytes of an image (JPEG, PNG, ...) to which this entry has been added.
std::string withEntry(const std::string& image, const std::string& key, const std::string& value);

/// The same with an Exif entry of any type.
std::string withEntry(const std::string& image, const std::string& key, const Exiv2::Value& value);

}  // namespace exiv2_tool
