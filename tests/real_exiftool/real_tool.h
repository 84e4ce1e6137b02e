#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/run_program.h"
#include "support/tool_directory.h"

namespace test_support {

/// The folder with the real exiftool.exe: the installed tool on POSIX, under the name that the
/// library looks for; the Windows build of the tool under Wine. Empty where there is none.
std::filesystem::path realToolFolder();

/// Puts the real tool into another folder too.
void copyRealToolTo(const std::filesystem::path& folder);

/// What the real tool prints when it is run by itself, file names given as UTF-8: standard output
/// and error, without carriage returns.
ProgramResult runRealTool(const std::vector<std::string>& arguments);

}  // namespace test_support
