// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace exiv2_tool {

/// The text as a part of a line: blanks in place of control characters, and none at its ends.
[[nodiscard]] inline std::string plainLine(std::string_view text) {
    constexpr auto isControl = [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; };
    std::string line(text);
    std::replace_if(line.begin(), line.end(), isControl, ' ');
    line.erase(0, line.find_first_not_of(' '));
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

}  // namespace exiv2_tool
