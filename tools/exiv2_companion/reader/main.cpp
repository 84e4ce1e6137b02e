// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <charconv>
#include <exiv2/exiv2.hpp>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "message.h"
#include "reader/commands.h"

namespace exiv2_companion {
namespace {

/// A size in pixels: decimal digits and nothing else, from 1 to 2147483647.
std::uint32_t readSize(std::string_view text) {
    std::uint32_t size = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, size);
    if (result.ec != std::errc() || result.ptr != end || size == 0 ||
        size > std::uint32_t{std::numeric_limits<std::int32_t>::max()}) {
        throw std::invalid_argument("not a size in pixels: " + std::string(text));
    }
    return size;
}

/// "preview FILE SIZE SIZE [FORMAT]" or "lens FILE". The format is accepted and left unused:
/// libexiv2 knows a file by its content.
void run(std::span<char* const> arguments) {
    const std::size_t count = arguments.size();
    const std::string_view command = count > 1 ? arguments[1] : "";
    if (command == "preview" && (count == 5 || count == 6)) {
        writePreview(arguments[2], std::max(readSize(arguments[3]), readSize(arguments[4])));
    } else if (command == "lens" && count == 3) {
        writeLensLine(arguments[2]);
    } else {
        throw std::invalid_argument("this program is started by the exiv2 companion");
    }
}

}  // namespace
}  // namespace exiv2_companion

int main(int count, char** arguments) {
    // A photo's flaws are no news to whoever asks for its preview; real failures are thrown.
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    try {
        exiv2_companion::run({arguments, static_cast<std::size_t>(count)});
        return 0;
    } catch (const std::exception& error) {
        exiv2_companion::say({count > 2 ? arguments[2] : "", count > 2 ? ": " : "", error.what()});
    } catch (...) {  // libexiv2's XMP part throws types of its own
        exiv2_companion::say({"unreadable metadata"});
    }
    return 1;
}
