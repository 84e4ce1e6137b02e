// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "exiv2/libexiv2.h"

namespace exiv2_tool {

/// The lens's name as libexiv2 interprets it; empty when it is unknown.
[[nodiscard]] std::string lensText(const Exiv2::ExifData& tags);

/// The name of a lens from what libexiv2 prints for it: without control characters and outer
/// blanks; empty when it tells no lens, such as "n/a", "Unknown Lens (255)" or "(183)".
[[nodiscard]] std::string knownLens(std::string_view printed);

}  // namespace exiv2_tool
