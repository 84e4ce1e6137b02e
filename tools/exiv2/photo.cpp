// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/photo.h"

namespace exiv2_tool {

Photo::Photo(const NativeChar* file) : file_(file), image_(openImage(file_.bytes())) {
    image_->readMetadata();
}

}  // namespace exiv2_tool
