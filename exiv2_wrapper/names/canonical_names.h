#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

/// What both canonical forms of a name drop: blanks, double quotes and slashes.
[[nodiscard]] constexpr bool isDroppedFromCamera(char c) {
    return c == ' ' || c == '"' || c == '/';
}

/// What the canonical form of a lens name drops: that, and hyphens.
[[nodiscard]] constexpr bool isDroppedFromLens(char c) {
    return isDroppedFromCamera(c) || c == '-';
}

/// Writes the lens canonical form of `name` into `room`, as far as it fits, and returns the length
/// of the whole form: more than room.size() when it didn't fit.
[[nodiscard]] constexpr std::size_t writeLensCanonical(std::string_view name,
                                                       std::span<char> room) {
    std::size_t length = 0;
    for (const char c : name) {
        if (isDroppedFromLens(c)) {
            continue;
        }
        if (length < room.size()) {
            room[length] = toLower(c);
        }
        ++length;
    }
    return length;
}

}  // namespace exiv2_wp::internal
