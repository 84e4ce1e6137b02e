// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "exiv2/libexiv2.h"
#include "exiv2/platform.h"

namespace exiv2_tool {

/// What is asked of a photo.
enum class Wanted {
    everything,
    exif,  ///< its Exif data alone: XMP may be missing
};

/// A photo whose metadata has been read.
class Photo {
public:
    /// libexiv2 gets the bytes and never the name, which might look like a URL or standard input.
    /// Throws a std::exception, or something of libexiv2's own, when the file can't be read.
    explicit Photo(const NativeChar* file, Wanted wanted = Wanted::everything);

    [[nodiscard]] const Exiv2::Image& image() const { return *image_; }

private:
    FileView file_;
    std::vector<std::uint8_t> exifAlone_;  // in place of the file, when that is enough
    ImagePointer image_;                   // reads in one of them: dies first
};

}  // namespace exiv2_tool
