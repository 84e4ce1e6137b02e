#pragma once

#include <string>

namespace photoinfo {

/// The folder that is taken where the user names none: the folder tools beside the one of this
/// program, as the package for Windows lays it out, if one of the tools lies there. An argument
/// (platform.h); empty without it.
[[nodiscard]] std::string usualToolFolder();

/// Why a tool of the folder (an argument, platform.h) doesn't work, for the user. The library says
/// only that it doesn't; this finds the likely reason. `program` is the tool's file name.
[[nodiscard]] std::string whyToolFails(const std::string& toolDirectory,
                                       const std::string& program);

}  // namespace photoinfo
