// SPDX-License-Identifier: GPL-2.0-or-later
#include "dispatcher/real_tool.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "message.h"

namespace exiv2_companion {
namespace {

constexpr const char* kToolVariable = "EXIV2_COMPANION_EXIV2";
constexpr std::string_view kToolName = "/exiv2";
constexpr std::string_view kDefaultSearchPath = "/usr/local/bin:/usr/bin:/bin";

// Left to the tool that is started: its number in the search, 0 for the one that kToolVariable
// names, from 1 for the folders of PATH. If that tool turns out to be another copy of this program,
// or a script that calls it, the search goes on behind it. The number only grows, so a chain of
// such calls ends, however long it is.
constexpr const char* kTriedVariable = "EXIV2_COMPANION_TRIED";

constexpr int kNotFound = 127;
constexpr int kRefused = 126;

/// The smallest number that has not been tried by a caller of this process; 0 when there is none.
/// A value that no caller can have left counts as no value.
int firstUntried() {
    const char* const tried = std::getenv(kTriedVariable);
    if (tried == nullptr || *tried == '\0') {
        return 0;
    }
    int number = 0;
    for (const char* digit = tried; *digit != '\0'; ++digit) {
        if (*digit < '0' || *digit > '9' || number > INT_MAX / 10 - 1) {
            return 0;
        }
        number = number * 10 + (*digit - '0');
    }
    return number + 1;
}

void rememberTried(int number) {
    std::array<char, 12> text{};
    char* begin = text.data() + text.size() - 1;
    do {
        *--begin = static_cast<char>('0' + number % 10);
        number /= 10;
    } while (number > 0);
    // A full memory costs the guard against loops; the call is refused rather than made without it.
    if (::setenv(kTriedVariable, begin, 1) != 0) {
        say({"not enough memory"});
        ::_exit(kRefused);
    }
}

bool isThisProgram(const char* path) {
    struct stat self {};
    struct stat other {};
    return ::stat("/proc/self/exe", &self) == 0 && ::stat(path, &other) == 0 &&
           self.st_dev == other.st_dev && self.st_ino == other.st_ino;
}

/// Whether a failed start means that there is no tool of that name, so that the search goes on.
bool meansNoTool(int error) {
    return error == ENOENT || error == ENOTDIR || error == EACCES || error == ELOOP ||
           error == ENAMETOOLONG;
}

/// Returns when there is no tool of that name; then `arguments` are as before.
void start(char* path, int number, char** arguments) {
    if (isThisProgram(path)) {
        return;
    }
    rememberTried(number);
    char* const name = arguments[0];
    arguments[0] = path;
    ::execv(path, arguments);
    if (!meansNoTool(errno)) {
        say({"can't start ", path, ": ", std::strerror(errno)});
        ::_exit(kRefused);
    }
    arguments[0] = name;
}

int startNamed(char* path, char** arguments) {
    if (firstUntried() > 0) {
        say({kToolVariable, " names a tool that calls this program: ", path});
        return kNotFound;
    }
    start(path, 0, arguments);
    say({kToolVariable, " names no other program: ", path});
    return kNotFound;
}

/// Starts "exiv2" in `folder`; returns when there is none.
void startIn(std::string_view folder, int number, char** arguments) {
    std::array<char, PATH_MAX> path{};
    if (!folder.starts_with('/') || folder.size() + kToolName.size() >= path.size()) {
        return;
    }
    std::memcpy(path.data(), folder.data(), folder.size());
    std::memcpy(path.data() + folder.size(), kToolName.data(), kToolName.size());
    start(path.data(), number, arguments);
}

}  // namespace

bool isCalledBack() {
    return firstUntried() > 0;
}

int becomeRealTool(char** arguments) {
    std::array<char*, 2> nameAlone{};
    if (arguments[0] == nullptr) {
        arguments = nameAlone.data();
    }
    char* const named = std::getenv(kToolVariable);
    if (named != nullptr && *named != '\0') {
        return startNamed(named, arguments);
    }
    const char* const variable = std::getenv("PATH");
    std::string_view rest = variable != nullptr ? variable : kDefaultSearchPath;
    const int first = firstUntried();
    for (int number = 1;; ++number) {
        const std::size_t end = rest.find(':');
        if (number >= first) {
            startIn(rest.substr(0, end), number, arguments);
        }
        if (end == std::string_view::npos) {
            break;
        }
        rest.remove_prefix(end + 1);
    }
    say({"found no exiv2 in PATH besides this program; set ", kToolVariable, " to its full path"});
    return kNotFound;
}

}  // namespace exiv2_companion
