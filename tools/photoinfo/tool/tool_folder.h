#pragma once

#include <string>

namespace photoinfo {

/// Why a tool of the folder (an argument, platform.h) doesn't work, for the user. The library says
/// only that it doesn't; this finds the likely reason. `program` is the tool's file name.
[[nodiscard]] std::string whyToolFails(const std::string& toolDirectory,
                                       const std::string& program);

}  // namespace photoinfo
