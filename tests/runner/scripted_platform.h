#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "exiv2_wrapper/platform/platform.h"

/// A platform in the real one's place: it starts nothing, fails where it is told and keeps a list
/// of what was asked of it.
namespace test_support {

struct ScriptedPlatform {
    exiv2_wp::internal::ErrorCode makePipeError = 0;
    exiv2_wp::internal::ErrorCode keepFromChildrenError = 0;
    exiv2_wp::internal::ErrorCode startRunError = 0;
    std::vector<std::string> reads;  ///< what one read after the other gives
    std::uint32_t exitCode = 0;
    std::filesystem::path libraryFile;

    std::vector<std::string> calls = {};  ///< for example "close read end"
};

/// The platform in force.
ScriptedPlatform& platform();

}  // namespace test_support
