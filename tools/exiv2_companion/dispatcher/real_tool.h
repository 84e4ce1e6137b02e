// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace exiv2_companion {

/// Whether a tool that this program took for the real exiv2 has called this program.
[[nodiscard]] bool isCalledBack();

/// Replaces this process by the real exiv2, with these arguments; only the first, the program's
/// name, becomes the tool's own path, so that the tool names itself as when it is called directly.
/// The real exiv2 is the file that the environment variable EXIV2_COMPANION_EXIV2 names, or else
/// the first "exiv2" in the absolute folders of PATH that is not this program. Relative folders
/// don't count: what lies in the current folder is never started.
/// Returns only when no tool could be started: the exit code, after a line on standard error; 127
/// when there is none, 126 when the system refuses one.
[[nodiscard]] int becomeRealTool(char** arguments);

}  // namespace exiv2_companion
