#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "support/this_process.h"

namespace test_support {

namespace {

// Puts `file` in a standard descriptor's place; returns a copy of what was there, -1 for nothing.
int replace(int descriptor, const std::filesystem::path& file, int flags) {
    const int saved = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int opened = ::open(file.c_str(), flags | O_CLOEXEC, 0600);
    ::dup2(opened, descriptor);
    ::close(opened);
    return saved;
}

void restore(int descriptor, int saved) {
    if (saved < 0) {
        ::close(descriptor);
        return;
    }
    ::dup2(saved, descriptor);
    ::close(saved);
}

}  // namespace

struct RedirectedStreams::Saved {
    int input;
    int error;
};

RedirectedStreams::RedirectedStreams(const std::filesystem::path& input,
                                     const std::filesystem::path& error)
    : saved_(std::make_unique<Saved>()) {
    saved_->input = replace(STDIN_FILENO, input, O_RDONLY);
    saved_->error = replace(STDERR_FILENO, error, O_WRONLY | O_CREAT | O_TRUNC);
}

RedirectedStreams::~RedirectedStreams() {
    restore(STDIN_FILENO, saved_->input);
    restore(STDERR_FILENO, saved_->error);
}

EnvironmentVariable::EnvironmentVariable(std::string name, const std::string& value)
    : name_(std::move(name)) {
    if (const char* const before = ::getenv(name_.c_str())) {
        before_ = before;
    }
    ::setenv(name_.c_str(), value.c_str(), 1);
}

EnvironmentVariable::~EnvironmentVariable() {
    before_ ? ::setenv(name_.c_str(), before_->c_str(), 1) : ::unsetenv(name_.c_str());
}

std::size_t countOpenHandles() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    const auto count = std::distance(begin(descriptors), end(descriptors));
    return static_cast<std::size_t>(count) - 1;  // the one that reads the folder
}

const std::size_t kHandlesKeptForThreads = 0;

bool hasChildren() {
    siginfo_t info{};
    const int result = ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT);
    return !(result < 0 && errno == ECHILD);
}

}  // namespace test_support
