#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "support/run_program.h"

extern char** environ;

namespace test_support {

int runIntoFiles(const std::filesystem::path& program, const std::vector<NativeString>& arguments,
                 const std::filesystem::path& output, const std::filesystem::path& error) {
    std::vector<char*> argv = {const_cast<char*>(program.c_str())};
    for (const NativeString& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);

    constexpr int kNewFile = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), kNewFile, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, error.c_str(), kNewFile, 0600);
    pid_t child = 0;
    const int failure =
        posix_spawn(&child, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        return -1;
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace test_support
