#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "exiv2_wrapper/platform/platform.h"

/// A platform in the real one's place that starts no tool, fails where it is told and keeps a list
/// of what was asked of it.
namespace test_support {

struct ScriptedService {
    std::string failingCall = {};  ///< the beginning of the call that fails; empty: none does
    exiv2_wp::internal::ErrorCode error = 0;  ///< what it fails with
    std::filesystem::path shortPath = {};     ///< the short form of every path
    std::vector<std::string> calls = {};      ///< for example "close input read end"
};

/// The platform in force.
ScriptedService& service();

}  // namespace test_support
