// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "companion/made_photo.h"
#include "companion/run_program.h"
#include "reader/preview_choice.h"
#include "support/tool_directory.h"

namespace companion_tests {

/// A preview answer, taken apart.
struct PreviewAnswer {
    exiv2_companion::PixelSize size = {};
    std::string payload = {};
};

/// None unless the output is "width height 0 0 0 0", a line feed and at least a byte.
std::optional<PreviewAnswer> takeApart(const std::string& output);

/// The names in a folder.
std::set<std::filesystem::path> namesIn(const std::filesystem::path& folder);

/// The companion with the stand-in tool as the real exiv2, and a folder for photos.
class Companion : public ::testing::Test {
protected:
    /// Calls the companion with the stand-in as the real exiv2.
    [[nodiscard]] ProgramEnd call(const std::vector<std::string>& arguments,
                                  const std::string& input = {}) const;
    /// The path of a new photo.
    [[nodiscard]] std::string makePhoto(const std::string& name,
                                        const PhotoContents& contents) const;

    test_support::TemporaryDirectory folder;
    test_support::ToolDirectory real;
};

}  // namespace companion_tests
