// SPDX-License-Identifier: GPL-2.0-or-later
#include "dispatcher/call_kind.h"

#include <string_view>

namespace exiv2_companion {

CallKind kindOf(std::span<char* const> arguments) {
    const std::size_t count = arguments.size();
    if (count < 3) {
        return CallKind::passOn;
    }
    const std::string_view first = arguments[1];
    if (first == "-ep" && (count == 5 || count == 6)) {
        return CallKind::preview;
    }
    // Behind "pr" a word with a dash is an option, or standard input.
    if (first == "pr" && count == 3 && arguments[2][0] != '-') {
        return CallKind::summary;
    }
    return CallKind::passOn;
}

}  // namespace exiv2_companion
