#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/tool_directory.h"

namespace test_support {

/// The installed exiv2 as the tool of a folder of its own.
class RealExiv2 {
public:
    RealExiv2();

    [[nodiscard]] const TemporaryDirectory& folder() const { return folder_; }

private:
    TemporaryDirectory folder_;
};

/// What the installed exiv2 prints on standard output when it is run with these options (for a
/// shell) on a file; nothing when the run fails.
std::string printedByExiv2(const std::string& options, const std::filesystem::path& file);

/// A listing of a folder with sizes and times, for a comparison with a later one.
std::string listing(const std::filesystem::path& folder);

/// Fails the program when the folder of photos isn't after the tests what it was before them:
/// readers of photos must not change one, nor write a file beside it.
class UntouchedPhotos : public ::testing::Environment {
public:
    void SetUp() override;
    void TearDown() override;

private:
    std::string before_;
};

}  // namespace test_support
