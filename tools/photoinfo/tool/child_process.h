#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace photoinfo::platform {

/// What a tool writes to standard output when it is called with these arguments: options and file
/// names, without double quotes. None when it can't be started or ends with another exit code than
/// 0.
[[nodiscard]] std::optional<std::string> outputOf(
    const std::filesystem::path& program,
    const std::vector<std::filesystem::path::string_type>& arguments);

}  // namespace photoinfo::platform
