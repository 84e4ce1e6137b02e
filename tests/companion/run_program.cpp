// SPDX-License-Identifier: GPL-2.0-or-later
#include "companion/run_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <ostream>
#include <stdexcept>

#include "support/read_file.h"
#include "support/tool_directory.h"

namespace companion_tests {
namespace {

using test_support::readFile;

std::vector<char*> nullTerminated(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

int waitForExitCode(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

void PrintTo(const ProgramEnd& end, std::ostream* stream) {
    *stream << "exit code " << end.exitCode << "\noutput: " << end.output
            << "\nerror: " << end.error;
}

ProgramEnd runProgram(const std::filesystem::path& program,
                      const std::vector<std::string>& arguments, const Surroundings& surroundings) {
    const test_support::TemporaryDirectory folder;
    const std::string input = folder.makeFile("input", surroundings.input).native();
    const std::string output = (folder.path() / "output").native();
    const std::string error = (folder.path() / "error").native();
    posix_spawn_file_actions_t actions{};
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 0, input.c_str(), O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT, 0600);
    ::posix_spawn_file_actions_addopen(&actions, 2, error.c_str(), O_WRONLY | O_CREAT, 0600);

    std::vector<std::string> texts = {program.native()};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables;
    for (const auto& [name, value] : surroundings.environment) {
        variables.push_back(name + "=" + value);
    }
    pid_t child = 0;
    const int failure =
        ::posix_spawn(&child, program.c_str(), &actions, nullptr, nullTerminated(texts).data(),
                      nullTerminated(variables).data());
    ::posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        throw std::runtime_error("can't start " + program.native());
    }
    const int exitCode = waitForExitCode(child);
    return {exitCode, readFile(output), readFile(error)};
}

}  // namespace companion_tests
