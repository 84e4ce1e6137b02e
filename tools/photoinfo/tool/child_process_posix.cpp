#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <utility>

#include "photoinfo/tool/child_process.h"

namespace photoinfo::platform {

namespace {

class Descriptor {
public:
    explicit Descriptor(int value) : value_(value) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    [[nodiscard]] int get() const { return value_; }
    void close() {
        if (value_ >= 0) {
            ::close(value_);
            value_ = -1;
        }
    }

private:
    int value_;
};

std::optional<pid_t> start(const std::string& program, std::vector<std::string> words, int output) {
    words.insert(words.begin(), program);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    if (::posix_spawn_file_actions_init(&actions) != 0) {
        return std::nullopt;
    }
    pid_t child = -1;
    const bool isStarted =
        ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO) == 0 &&
        ::posix_spawn(&child, program.c_str(), &actions, nullptr, arguments.data(), environ) == 0;
    ::posix_spawn_file_actions_destroy(&actions);
    return isStarted ? std::optional(child) : std::nullopt;
}

std::string readAll(int descriptor) {
    std::string text;
    std::array<char, 4096> buffer{};
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return text;
        }
    }
}

bool endsWell(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

std::optional<std::string> outputOf(const std::filesystem::path& program,
                                    const std::vector<std::string>& arguments) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    const Descriptor readEnd(ends[0]);
    Descriptor writeEnd(ends[1]);
    const std::optional<pid_t> child = start(program.native(), arguments, writeEnd.get());
    writeEnd.close();
    if (!child) {
        return std::nullopt;
    }
    std::string text = readAll(readEnd.get());
    return endsWell(*child) ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace photoinfo::platform
