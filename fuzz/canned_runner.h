#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "exiv2_wrapper/platform/platform.h"

/// In the place of the library's process runner: no process is started, the output is at hand.
namespace fuzz {

struct CannedRunner {
    bool result = true;
    std::string output = {};         ///< of every run but those with "pr"
    std::string summaryOutput = {};  ///< of runs with "pr"
    std::size_t pieceSize = 1;       ///< of the output for one who reads along
    std::vector<exiv2_wp::internal::NativeString> arguments = {};  ///< of the last run
};

CannedRunner& cannedRunner();

}  // namespace fuzz
