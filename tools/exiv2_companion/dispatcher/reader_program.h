// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace exiv2_companion {

/// The reader is the second program of the companion, the one that is linked with libexiv2. It
/// lies beside this program (beside the file itself, wherever a link to it may be), or else where
/// the build has put it, so that a copy of this program serves without one of the reader.

/// Runs "reader lens FILE" and waits for its end. It writes at most one line to standard output and
/// nothing to standard error: what is wrong with a file, the real exiv2 says in its own words.
void writeLensLine(char* file);

/// Replaces this process by "reader preview ..." with the arguments behind "-ep". Returns only when
/// that fails: the exit code, after a line on standard error.
[[nodiscard]] int becomePreviewReader(char** arguments);

}  // namespace exiv2_companion
