#pragma once

#include <filesystem>

namespace exiv2_wp::internal {

/// The full path of exiv2.exe; empty until `exiv2_wp::initialize` has succeeded. Written by that
/// function alone and not locked: the host calls it before every other function and not during one.
extern std::filesystem::path exiv2ExecutablePath;

/// The directory of the library's own module file; empty when it can't be learnt.
[[nodiscard]] std::filesystem::path libraryDirectory();

}  // namespace exiv2_wp::internal
