// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "exiv2/libexiv2.h"
#include "exiv2/platform.h"

namespace exiv2_tool {

/// A photo whose metadata has been read.
class Photo {
public:
    /// libexiv2 gets the bytes and never the name, which might look like a URL or standard input.
    /// Throws a std::exception, or something of libexiv2's own, when the file can't be read.
    explicit Photo(const NativeChar* file);

    [[nodiscard]] const Exiv2::Image& image() const { return *image_; }

private:
    FileView file_;
    ImagePointer image_;  // reads in the file: dies first
};

}  // namespace exiv2_tool
