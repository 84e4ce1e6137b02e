#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "exiftool/exiftool_host.h"

namespace exiftool_host {

std::vector<std::string> utf8Arguments(int count, char** values) {
    return {values + 1, values + count};
}

void dieAtOnce() {
    ::kill(::getpid(), SIGKILL);
    std::abort();
}

void forkAndExit() {
    const pid_t child = ::fork();
    if (child == 0) {
        std::exit(0);
    }
    ::waitpid(child, nullptr, 0);
}

}  // namespace exiftool_host
