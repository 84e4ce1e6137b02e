#include <signal.h>

#include <fstream>
#include <string>

#include "exiftool/processes.h"
#include "support/read_file.h"

namespace test_support {

// A process that has ended stays in the table until it is waited for, in state Z.
bool isProcessAlive(unsigned long processId) {
    std::ifstream file("/proc/" + std::to_string(processId) + "/stat");
    std::string stat;
    if (!std::getline(file, stat)) {
        return false;
    }
    const auto state = stat.rfind(") ");
    return state != std::string::npos && stat[state + 2] != 'Z' && stat[state + 2] != 'X';
}

void killProcess(unsigned long processId) {
    ::kill(static_cast<pid_t>(processId), SIGKILL);
}

std::set<unsigned long> exiftoolProcesses(const std::filesystem::path& folder) {
    std::set<unsigned long> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos) {
            continue;
        }
        const std::string commandLine = readFile(entry.path() / "cmdline");
        const std::string tool = (folder / "exiftool.exe").string();
        if (commandLine.find(tool + std::string("\0-stay_open", 11)) != std::string::npos &&
            isProcessAlive(std::stoul(name))) {
            found.insert(std::stoul(name));
        }
    }
    return found;
}

}  // namespace test_support
