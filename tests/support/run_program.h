#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace test_support {

using NativeString = std::filesystem::path::string_type;

/// What a program did.
struct ProgramResult {
    int exitCode = 0;
    std::string output;  ///< standard output
    std::string error;   ///< standard error
    bool operator==(const ProgramResult&) const = default;
};

void PrintTo(const ProgramResult& result, std::ostream* stream);

/// Runs a program to its end, with an empty standard input, and keeps what it writes in two files
/// of `folder` meanwhile. A program that can't be started has exit code -1.
ProgramResult runProgram(const std::filesystem::path& program,
                         const std::vector<NativeString>& arguments,
                         const std::filesystem::path& folder);

/// What each platform does in its own way (run_program_posix.cpp, run_program_win32.cpp): runs the
/// program with its outputs in these files and returns its exit code.
int runIntoFiles(const std::filesystem::path& program, const std::vector<NativeString>& arguments,
                 const std::filesystem::path& output, const std::filesystem::path& error);

}  // namespace test_support
