// SPDX-License-Identifier: GPL-2.0-or-later
#include "reader/output.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace exiv2_companion {

void writeOutput(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "can't write the output");
        }
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
    }
}

}  // namespace exiv2_companion
