#pragma once

#include <string>
#include <vector>

namespace photoinfo {

/// Runs the program. `arguments` come without the program's name, as platform.h describes them.
/// Returns the process's exit code; raises nothing.
[[nodiscard]] int runApplication(std::vector<std::string> arguments) noexcept;

}  // namespace photoinfo
