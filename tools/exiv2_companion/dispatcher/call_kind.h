// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <span>

namespace exiv2_companion {

enum class CallKind {
    passOn,   ///< for the real exiv2 alone
    preview,  ///< "-ep FILE SIZE SIZE [FORMAT]": answered here
    summary,  ///< "pr FILE": a lens line, then the real exiv2
};

/// What a call asks for, by its arguments (the program's name is the first of them). Only these
/// exact forms are taken: the real exiv2 has calls of its own that begin with the same words, such
/// as "-ep FILE" or "pr FILE FILE", and they stay its own.
[[nodiscard]] CallKind kindOf(std::span<char* const> arguments);

}  // namespace exiv2_companion
