#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>

#include "support/stand_in_tool.h"

namespace stand_in::platform {

bool write(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::size_t read(char* buffer, std::size_t size) {
    ssize_t count = 0;
    do {
        count = ::read(STDIN_FILENO, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

void closeOutput() {
    ::close(STDOUT_FILENO);
    ::close(STDERR_FILENO);
}

unsigned long processId() {
    return static_cast<unsigned long>(::getpid());
}

void dieBySignal(int signal) {
    ::signal(signal, SIG_DFL);
    ::raise(signal);
    std::abort();
}

}  // namespace stand_in::platform

int main(int argc, char** argv) {
    // The name by which it was started, not what a link points to, tells it where its scenario is.
    return stand_in::play(argv[0], argv[0], {argv + (argc > 0 ? 1 : 0), argv + argc});
}
