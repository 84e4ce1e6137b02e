#pragma once

#include <filesystem>
#include <string>
#include <utility>

#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/runner/tool_location.h"

namespace test_support {

/// Lets 200 files that no test knows into the cache, as many as it holds, so that every other goes.
/// Without a tool that starts, each is remembered as a failure at little cost. Call it while no
/// other thread runs the tool.
inline void fillCache() {
    using exiv2_wp::internal::exiv2ExecutablePath;
    constexpr int kCapacity = 200;
    static int number = 0;
    const auto missing = std::filesystem::temp_directory_path() / "missing" / "exiv2.exe";
    const auto tool = std::exchange(exiv2ExecutablePath, missing);
    for (int i = 0; i < kCapacity; ++i) {
        const auto file = missing.parent_path() / std::to_string(number++);
        (void)exiv2_wp::internal::readExifMetadataFromCliCached(file);
    }
    exiv2ExecutablePath = tool;
}

}  // namespace test_support
