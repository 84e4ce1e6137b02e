#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/stand_in_tool.h"

/// What the stand-in reads from its scenario and writes to its record, whichever tool it stands
/// for. `directory` is the folder of both, beside the program.
namespace stand_in {

using Json = nlohmann::json;

[[nodiscard]] Json readScenario(const std::filesystem::path& directory);

[[nodiscard]] NativeString nativeText(const std::string& utf8);

/// Records one event: a file of its own, named so that they sort by time. It appears whole or not
/// at all.
void record(const std::filesystem::path& directory, const std::string& kind,
            const std::string& bytes);

/// Does what a rule says, and returns its exit code. What it says for standard output goes there,
/// or behind `capture` when there is one.
int playRule(const std::filesystem::path& directory, const Json& rule,
             std::string* capture = nullptr);

/// The tool that is started once and then reads requests from standard input.
int playLongLived(const std::filesystem::path& directory);

}  // namespace stand_in
