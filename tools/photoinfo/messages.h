#pragma once

#include <string_view>

namespace photoinfo {

/// Writes "photoinfo: message" as one line to standard error. The message may hold file names and
/// other text from outside: it is made printable.
void complain(std::string_view message) noexcept;

}  // namespace photoinfo
