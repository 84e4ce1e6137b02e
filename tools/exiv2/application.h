// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <span>

#include "exiv2/platform.h"

namespace exiv2_tool {

/// Answers one call, given by its arguments without the program's name, and returns the exit code:
/// 0, 1 when the call failed, 2 when there is no such call. Each but 0 has its reason in one line
/// on standard error, save that of an output that nobody reads any more.
[[nodiscard]] int runApplication(std::span<const Argument> arguments);

}  // namespace exiv2_tool
