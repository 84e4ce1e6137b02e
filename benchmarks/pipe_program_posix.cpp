#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "pipe_program.h"

namespace benchmarks {

PipeProgram::PipeProgram(const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);

    int input[2] = {-1, -1};
    int output[2] = {-1, -1};
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    if (pipe2(input, O_CLOEXEC) == 0 && pipe2(output, O_CLOEXEC) == 0) {
        posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
        posix_spawn(&process_, argv[0], &actions, nullptr, argv.data(), environ);
    }
    posix_spawn_file_actions_destroy(&actions);
    if (process_ < 0) {
        std::fprintf(stderr, "cannot start %s\n", argv[0]);
        std::exit(EXIT_FAILURE);
    }
    close(input[0]);
    close(output[1]);
    input_ = input[1];
    output_ = output[0];
}

PipeProgram::~PipeProgram() {
    close(input_);
    close(output_);
    kill(process_, SIGTERM);  // exiftool stays when its input ends
    waitpid(process_, nullptr, 0);
}

void PipeProgram::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::write(input_, bytes.data(), bytes.size());
        if (count <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::size_t PipeProgram::read(std::span<char> buffer) const {
    const ssize_t count = ::read(output_, buffer.data(), buffer.size());
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

std::string PipeProgram::readLine() const {
    std::string line;
    for (char c = 0; read({&c, 1}) == 1 && c != '\n';) {
        line += c;
    }
    return line;
}

}  // namespace benchmarks
