#include "photoinfo/folder/photo_finder.h"

#include <gtest/gtest.h>

#include "photoinfo/platform.h"
#include "support/tool_directory.h"

// What the finder asks of the platform; the program's own versions come with its entry point.
namespace photoinfo::platform {

std::string argumentOf(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

bool isLink(const std::filesystem::path& path) {
    return std::filesystem::is_symlink(path);
}

void writeError(std::string_view) {}

std::size_t errorTerminalColumns() {
    return 0;
}

}  // namespace photoinfo::platform

namespace photoinfo {
namespace {

bool goOn() {
    return false;
}

TEST(FindPhotos, ReportsAFolderThatCannotBeRead) {
    const test_support::TemporaryDirectory folder;
    const auto gone = folder.path() / "gone";

    const FoundFiles found = findPhotos(gone, false, goOn);

    EXPECT_TRUE(found.photos.empty());
    EXPECT_EQ(found.failures,
              std::vector<std::string>{platform::argumentOf(gone) + ": the folder cannot be read"});
}

TEST(FindPhotos, StopsWhenToldTo) {
    const test_support::TemporaryDirectory folder;
    (void)folder.makeFile("a.jpg");

    EXPECT_TRUE(findPhotos(folder.path(), false, [] { return true; }).photos.empty());
    EXPECT_EQ(findPhotos(folder.path(), false, goOn).photos.size(), 1U);
}

TEST(FindPhotos, KnowsEveryExtensionThatItNames) {
    std::string extensions = photoExtensions() + " ";
    for (std::size_t end = 0; (end = extensions.find(' ')) != std::string::npos;
         extensions.erase(0, end + 1)) {
        EXPECT_TRUE(hasPhotoExtension("photo." + extensions.substr(0, end))) << extensions;
    }
    EXPECT_FALSE(hasPhotoExtension("photo"));
    EXPECT_FALSE(hasPhotoExtension(".jpg"));
}

}  // namespace
}  // namespace photoinfo
