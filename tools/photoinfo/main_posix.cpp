#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "photoinfo/application.h"
#include "photoinfo/platform.h"

namespace photoinfo::platform {

namespace {

int errorDescriptor = STDERR_FILENO;

}  // namespace

std::filesystem::path pathOf(const std::string& argument) {
    return argument;
}

std::string argumentOf(const std::filesystem::path& path) {
    return path.native();
}

std::optional<std::string> narrowPathOf(const std::filesystem::path& path) {
    return path.native();
}

std::filesystem::path programFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

void setEnvironmentDefault(const char* name, const char* value) {
    constexpr int kKeepExisting = 0;
    ::setenv(name, value, kKeepExisting);
}

void silenceTools() {
    constexpr int kLeastDescriptor = STDERR_FILENO + 1;
    const int kept = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, kLeastDescriptor);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (kept >= 0 && nowhere >= 0 && ::dup2(nowhere, STDERR_FILENO) >= 0) {
        errorDescriptor = kept;
    }
}

void writeError(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(errorDescriptor, text.data(), text.size());
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return;
        }
    }
}

std::size_t errorTerminalColumns() {
    constexpr std::size_t kUsualColumns = 80;  // for a terminal that doesn't say
    if (::isatty(errorDescriptor) == 0) {
        return 0;
    }
    winsize size{};
    const bool isKnown = ::ioctl(errorDescriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : kUsualColumns;
}

bool isLink(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_symlink(path, error);
}

}  // namespace photoinfo::platform

int main(int argc, char** argv) {
    return photoinfo::runApplication({argv + (argc > 0 ? 1 : 0), argv + argc});
}
