#pragma once

#include <string>

namespace photoinfo {

/// Starts the library with the exiv2.exe of this folder (an argument, platform.h; empty: beside the
/// library). Raises a `Failure` that says what is wrong when there is none that works.
void startExiv2(const std::string& toolDirectory);

}  // namespace photoinfo
