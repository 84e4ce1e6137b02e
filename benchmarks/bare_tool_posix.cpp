#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bare_tool.h"
#include "tool_folder.h"

namespace benchmarks {

namespace {

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;
};

Pipe makePipe() {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) {
        giveUp("no pipe");
    }
    return {ends[0], ends[1]};
}

// Returns the process. Its standard input is a pipe's read end; -1 leaves it as it is.
pid_t start(const std::vector<std::string>& arguments, int input, int output) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    if (input >= 0) {
        posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    }
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t process = -1;
    if (posix_spawn(&process, argv[0], &actions, nullptr, argv.data(), environ) != 0) {
        giveUp("cannot start " + arguments[0]);
    }
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

std::size_t readSome(int descriptor, std::span<char> buffer) {
    const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

}  // namespace

std::string runBare(const std::vector<std::string>& arguments) {
    const Pipe pipe = makePipe();
    const pid_t process = start(arguments, -1, pipe.writeEnd);
    close(pipe.writeEnd);
    std::string output;
    char buffer[8192];
    while (const std::size_t count = readSome(pipe.readEnd, buffer)) {
        output.append(buffer, count);
    }
    close(pipe.readEnd);
    waitpid(process, nullptr, 0);
    return output;
}

BareTool::BareTool(const std::vector<std::string>& arguments) {
    const Pipe input = makePipe();
    const Pipe output = makePipe();
    process_ = start(arguments, input.readEnd, output.writeEnd);
    close(input.readEnd);
    close(output.writeEnd);
    input_ = input.writeEnd;
    output_ = output.readEnd;
}

BareTool::~BareTool() {
    close(input_);
    close(output_);
    kill(process_, SIGTERM);  // exiftool stays when its input ends
    waitpid(process_, nullptr, 0);
}

void BareTool::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::write(input_, bytes.data(), bytes.size());
        if (count <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::size_t BareTool::read(std::span<char> buffer) const {
    return readSome(output_, buffer);
}

std::string BareTool::readLine() const {
    std::string line;
    for (char c = 0; read({&c, 1}) == 1 && c != '\n';) {
        line += c;
    }
    return line;
}

}  // namespace benchmarks
