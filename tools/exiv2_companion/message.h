// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <initializer_list>
#include <string_view>

namespace exiv2_companion {

/// Writes one line to standard error: "exiv2 companion: " and the parts.
void say(std::initializer_list<std::string_view> parts);

}  // namespace exiv2_companion
