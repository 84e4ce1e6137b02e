// SPDX-License-Identifier: GPL-2.0-or-later
#include "message.h"

#include <unistd.h>

#include <cerrno>

namespace exiv2_companion {
namespace {

void write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(STDERR_FILENO, text.data(), text.size());
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return;  // Nobody can be told.
        }
    }
}

}  // namespace

void say(std::initializer_list<std::string_view> parts) {
    write("exiv2 companion: ");
    for (const std::string_view part : parts) {
        write(part);
    }
    write("\n");
}

}  // namespace exiv2_companion
