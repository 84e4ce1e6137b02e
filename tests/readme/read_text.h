#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace test_support {

/// A path below the project's folder.
std::filesystem::path sourcePath(const char* relative);

/// A text file as it reads: a checkout may have given it either kind of line end.
std::string readText(const std::filesystem::path& file);

/// The README and every page of docs/.
std::vector<std::filesystem::path> documents();

}  // namespace test_support
