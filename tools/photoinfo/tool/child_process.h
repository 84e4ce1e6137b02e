#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace photoinfo::platform {

/// What a tool writes to standard output when it is called with `argument` (plain ASCII, no blank).
/// None when it can't be started or ends with another exit code than 0.
[[nodiscard]] std::optional<std::string> outputOf(const std::filesystem::path& program,
                                                  const std::string& argument);

}  // namespace photoinfo::platform
