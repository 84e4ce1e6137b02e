// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "exiv2/libexiv2.h"

namespace exiv2_tool {

/// Appends the preview that suits `wanted` best (preview_choice.h; pixels on the longer side):
/// "width height 0 0 0 0", a line feed, the preview's bytes. A preview that holds no image is
/// passed over. Throws a std::exception, before anything is appended, when there is none.
void printPreview(std::string& output, const Exiv2::Image& image, std::uint32_t wanted);

}  // namespace exiv2_tool
