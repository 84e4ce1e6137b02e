// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/photo.h"

#include "exiv2/without_xmp.h"

namespace exiv2_tool {

Photo::Photo(const NativeChar* file, Wanted wanted) : file_(file) {
    if (wanted == Wanted::exif) {
        exifAlone_ = withoutXmp(file_.bytes());
    }
    image_ = openImage(exifAlone_.empty() ? file_.bytes() : std::span(exifAlone_));
    image_->readMetadata();
}

}  // namespace exiv2_tool
