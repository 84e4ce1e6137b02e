// SPDX-License-Identifier: GPL-2.0-or-later
#include "dispatcher/reader_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <string_view>

#include "message.h"

namespace exiv2_companion {
namespace {

constexpr std::string_view kReaderName = EXIV2_COMPANION_READER_NAME;
constexpr const char* kBuiltReader = EXIV2_COMPANION_READER;
constexpr int kFailed = 1;

class ReaderPath {
public:
    ReaderPath() {
        const ssize_t length = ::readlink("/proc/self/exe", beside_.data(), beside_.size());
        const std::string_view self(beside_.data(),
                                    length > 0 ? static_cast<std::size_t>(length) : 0);
        const std::size_t folder = self.rfind('/') + 1;  // 0 when nothing is known
        if (folder == 0 || folder + kReaderName.size() >= beside_.size()) {
            return;
        }
        std::memcpy(beside_.data() + folder, kReaderName.data(), kReaderName.size());
        beside_[folder + kReaderName.size()] = '\0';
        if (::access(beside_.data(), X_OK) == 0) {
            path_ = beside_.data();
        }
    }
    [[nodiscard]] const char* get() const { return path_; }

private:
    std::array<char, PATH_MAX> beside_{};
    const char* path_ = kBuiltReader;
};

}  // namespace

void writeLensLine(char* file) {
    const ReaderPath reader;
    std::array<char, kReaderName.size() + 1> name{EXIV2_COMPANION_READER_NAME};
    std::array<char, 5> command{"lens"};
    const std::array<char*, 4> arguments{name.data(), command.data(), file, nullptr};
    posix_spawn_file_actions_t silence{};
    if (::posix_spawn_file_actions_init(&silence) != 0 ||
        ::posix_spawn_file_actions_addopen(&silence, STDERR_FILENO, "/dev/null", O_WRONLY, 0) !=
            0) {
        return;
    }
    pid_t child = 0;
    if (::posix_spawn(&child, reader.get(), &silence, nullptr, arguments.data(), environ) != 0) {
        return;
    }
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

int becomePreviewReader(char** arguments) {
    const ReaderPath reader;
    std::array<char, kReaderName.size() + 1> name{EXIV2_COMPANION_READER_NAME};
    std::array<char, 8> command{"preview"};
    arguments[0] = name.data();
    arguments[1] = command.data();
    ::execv(reader.get(), arguments);
    say({"can't start ", reader.get(), ": ", std::strerror(errno)});
    return kFailed;
}

}  // namespace exiv2_companion
