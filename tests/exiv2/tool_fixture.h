// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "exiv2/made_photo.h"
#include "support/run_program.h"
#include "support/tool_directory.h"

namespace exiv2_tool {

using test_support::ProgramResult;

/// The arguments of a call; file names among plain words.
using Call = std::vector<std::filesystem::path>;

/// The names in a folder.
std::set<std::filesystem::path> namesIn(const std::filesystem::path& folder);

/// Runs the tool, on photos in a folder of its own.
class ToolTest : public ::testing::Test {
protected:
    [[nodiscard]] ProgramResult call(const Call& arguments) const;
    /// The path of a new photo; its name is UTF-8.
    [[nodiscard]] std::filesystem::path makePhoto(std::string_view name,
                                                  const PhotoContents& contents) const;

    test_support::TemporaryDirectory folder;

private:
    test_support::TemporaryDirectory outputs_;
};

}  // namespace exiv2_tool
