#pragma once

#include <filesystem>
#include <future>
#include <string>
#include <vector>

#include "support/run_program.h"

namespace test_support {

/// Runs a small host (exiftool_host.cpp) that performs these commands (UTF-8), in a process of its
/// own. Its output comes without carriage returns.
ProgramResult runHost(const std::vector<std::string>& commands);

/// The same, meanwhile.
std::future<ProgramResult> startHost(std::vector<std::string> commands);

/// Waits until there is a file of this name, two minutes at most; false when there is none.
bool waitForFile(const std::filesystem::path& file);

/// UTF-8 texts as native arguments.
std::vector<NativeString> nativeArguments(const std::vector<std::string>& arguments);

}  // namespace test_support
