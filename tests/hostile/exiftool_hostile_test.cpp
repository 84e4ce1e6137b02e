#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exiftool/host_program.h"
#include "hostile/hostile_photo.h"

/// Photos whose names and metadata look like requests and answers, through the real ExifTool. Each
/// test has a host of its own, and so a tool of its own.
namespace exiv2_wp {
namespace {

using test_support::runHost;

class HostileExiftool : public test_support::HostilePhoto {
protected:
    // The title and then the software of files, as a host prints them, a line each.
    std::string readTitles(const std::vector<std::filesystem::path>& files) const {
        std::vector<std::string> commands = {"init", tools().string()};
        for (const std::filesystem::path& file : files) {
            commands.insert(commands.end(), {"tags", file.string(), "-Title -Software"});
        }
        std::string output = runHost(commands).output;
        std::string lines;
        for (std::size_t at = 0; at < output.size();) {
            const std::size_t end = output.find('\n', at);
            const std::string line = output.substr(at, end - at);
            lines += line.starts_with("tags") ? line + "\n" : "";
            at = end + 1;
        }
        return lines;
    }
};

// ExifTool shows control characters of a value as dots.
TEST_F(HostileExiftool, KeepsAValueOnOneLine) {
    const auto photo = makePhoto(
        "photo.jpg", {"-XMP-dc:Title=x\nSoftware: y\n-execute\n{rea", "-EXIF:Software=s"});
    const auto before = snapshot();
    EXPECT_EQ(readTitles({photo, photo}),
              "tags Software=s Title=x.Software: y.-execute.{rea\n"
              "tags Software=s Title=x.Software: y.-execute.{rea\n");
    EXPECT_EQ(snapshot(), before);
}

TEST_F(HostileExiftool, CopiesValuesThatLookLikeRequests) {
    const auto source = makePhoto(
        "source.jpg", {"-XMP-dc:Title=x\n-Artist=added\n-execute", "-EXIF:Artist=author"});
    const auto destination = makePhoto("export.jpg", {"-all="});
    const auto result = runHost(
        {"init", tools().string(), "copy", source.string(), destination.string(), "uninit"});
    EXPECT_EQ(result.output, "init 1\ncopy 1\nuninit\n");
    EXPECT_EQ(printedTag(destination, "Title"), "x.-Artist=added.-execute\n");
    EXPECT_EQ(printedTag(destination, "Artist"), "author\n");
}

TEST_F(HostileExiftool, ReadsPhotosOfAnyNameWithoutALineFeed) {
    std::vector<std::filesystem::path> photos;
    std::string expected;
    for (const char* const name : {"two words.jpg", "\"quoted\".jpg", "$(touch made).jpg",
                                   "a;touch made;.jpg", "a|b>made.jpg", "-Artist=added.jpg",
                                   "-execute", "{ready}.jpg", "#comment.jpg", "*.jpg"}) {
        expected += "tags Software=s Title=" + std::to_string(photos.size()) + "\n";
        photos.push_back(makePhoto(name));
    }
    // Each has its place in the list for a title, so that no answer is taken for another's.
    change(photos, {"-XMP-dc:Title<FileSequence", "-EXIF:Software=s"});
    const auto before = snapshot();
    EXPECT_EQ(readTitles(photos), expected);
    EXPECT_EQ(snapshot(), before);
}

// A long value with the marker in it ends the answer early, and its rest is taken for the beginning
// of the next. Known: the marker is all that tells where an answer ends. A host that is slow to
// read may find the next answer right behind the rest, and is in step again.
TEST_F(HostileExiftool, IsOneAnswerLateBehindALongValueWithTheMarker) {
    const auto next = makePhoto("clean.jpg", {"-XMP-dc:Title=clean", "-EXIF:Software=s"});
    const auto hostile = makePhoto(
        "hostile.jpg", {"-XMP-dc:Title={ready}" + std::string(600, '!'), "-EXIF:Software=h"});
    const std::string lines = readTitles({hostile, next, next});
    EXPECT_TRUE(lines.starts_with("tags Title={ready}!")) << lines;
    const std::string clean = "tags Software=s Title=clean\n";
    EXPECT_TRUE(lines.ends_with("\ntags Software=h\n" + clean) ||
                lines.ends_with("\n" + clean + clean))
        << lines;
}

// A request is made of lines, so a line feed in a name ends it there. Known, and the reason why a
// host on a system with such names must not pass them; Windows has none.
TEST_F(HostileExiftool, TakesWhatFollowsALineFeedInANameForArguments) {
    const auto victim = makePhoto("victim.jpg", {"-EXIF:Artist=author"});
    (void)readTitles({folder() / "none.jpg\n-EXIF:Artist=added", victim.string() + "\n"});
    EXPECT_EQ(printedTag(victim, "Artist"), "author\n");
    (void)readTitles(
        {folder() / ("none.jpg\n-overwrite_original\n-EXIF:Artist=added\n" + victim.string())});
    EXPECT_EQ(printedTag(victim, "Artist"), "added\n");
}

// A name that begins with a dash is an option to ExifTool where the path doesn't begin with a
// folder: nothing is read, and nothing is changed.
TEST_F(HostileExiftool, DoesNotReadARelativePathThatBeginsWithADash) {
    (void)makePhoto("-Artist=added");
    const auto before = snapshot();
    EXPECT_EQ(readTitles({"-Artist=added"}), "tags\n");
    EXPECT_EQ(snapshot(), before);
}

}  // namespace
}  // namespace exiv2_wp
