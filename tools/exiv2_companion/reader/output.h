// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string_view>

namespace exiv2_companion {

/// Writes all the bytes to standard output, past every buffer. Throws std::system_error when that
/// fails.
void writeOutput(std::string_view bytes);

}  // namespace exiv2_companion
