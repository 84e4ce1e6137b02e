#include "photoinfo/files/output_file.h"

#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <string>

#include "support/read_file.h"
#include "support/tool_directory.h"

namespace photoinfo {
namespace {

using test_support::readFile;

constexpr std::array<unsigned char, 3> kBytes = {'n', 0, 'w'};

class WriteWhole : public ::testing::Test {
protected:
    [[nodiscard]] auto countFiles() const {
        return std::distance(std::filesystem::directory_iterator(folder.path()), {});
    }

    test_support::TemporaryDirectory folder;
};

TEST_F(WriteWhole, MakesAFile) {
    const auto file = folder.path() / "new";

    EXPECT_TRUE(writeWhole(file, kBytes));
    EXPECT_EQ(readFile(file), std::string("n\0w", 3));
    EXPECT_EQ(countFiles(), 1);
}

TEST_F(WriteWhole, ReplacesAFile) {
    const auto file = folder.makeFile("old", "an older and longer one");

    EXPECT_TRUE(writeWhole(file, kBytes));
    EXPECT_EQ(readFile(file), std::string("n\0w", 3));
    EXPECT_EQ(countFiles(), 1);
}

TEST_F(WriteWhole, LeavesNothingBehindWhenItFails) {
    const auto taken = folder.path() / "taken";
    std::filesystem::create_directories(taken / "inside");

    EXPECT_FALSE(writeWhole(taken, kBytes));
    EXPECT_TRUE(std::filesystem::is_directory(taken));
    EXPECT_EQ(countFiles(), 1);
}

TEST_F(WriteWhole, FailsInAFolderThatIsMissing) {
    EXPECT_FALSE(writeWhole(folder.path() / "nowhere" / "new", kBytes));
}

}  // namespace
}  // namespace photoinfo
