// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/platform.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace exiv2_tool {
namespace {

// A named pipe is opened at once, and then seen to be none of ours. Only the owner of a file may
// read it without leaving a trace.
int openForReading(const char* name) {
    constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
#ifdef O_NOATIME
    const int file = ::open(name, kFlags | O_NOATIME);
    if (file >= 0 || errno != EPERM) {
        return file;
    }
#endif
    return ::open(name, kFlags);
}

std::span<const std::uint8_t> viewOf(int file) {
    struct stat status {};
    if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
        throw std::runtime_error("not a regular file");
    }
    if (status.st_size == 0) {
        throw std::runtime_error("the file is empty");
    }
    const auto size = static_cast<std::size_t>(status.st_size);
    const void* const view = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (view == MAP_FAILED) {
        throw std::runtime_error(std::strerror(errno));
    }
    return {static_cast<const std::uint8_t*>(view), size};
}

// Nothing interrupts a write: this program handles no signal.
bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace

FileView::FileView(const NativeChar* name) {
    const int file = openForReading(name);
    if (file < 0) {
        throw std::runtime_error(std::strerror(errno));
    }
    try {
        bytes_ = viewOf(file);
    } catch (...) {
        ::close(file);
        throw;
    }
    ::close(file);
}

FileView::~FileView() {
    ::munmap(const_cast<std::uint8_t*>(bytes_.data()), bytes_.size());
}

Written writeOutput(std::string_view bytes) {
    if (writeAll(STDOUT_FILENO, bytes)) {
        return Written::whole;
    }
    return errno == EPIPE ? Written::unwanted : Written::failed;
}

void writeError(std::string_view text) {
    (void)writeAll(STDERR_FILENO, text);
}

}  // namespace exiv2_tool
