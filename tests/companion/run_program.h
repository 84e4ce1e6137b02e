// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <filesystem>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace companion_tests {

/// What a program left behind.
struct ProgramEnd {
    int exitCode = 0;  ///< -1: it was ended by a signal
    std::string output = {};
    std::string error = {};

    friend bool operator==(const ProgramEnd&, const ProgramEnd&) = default;
};

void PrintTo(const ProgramEnd& end, std::ostream* stream);

struct Surroundings {
    std::string input = {};  ///< the bytes of standard input
    std::map<std::string, std::string> environment = {{"PATH", "/usr/local/bin:/usr/bin:/bin"}};
};

/// Runs `program` with `arguments` (its name not among them) in these surroundings and nothing else
/// of this process's, and waits for its end.
ProgramEnd runProgram(const std::filesystem::path& program,
                      const std::vector<std::string>& arguments,
                      const Surroundings& surroundings = {});

}  // namespace companion_tests
