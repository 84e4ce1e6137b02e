// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "companion/companion_fixture.h"
#include "support/read_file.h"

namespace companion_tests {
namespace {

using exiv2_companion::PixelSize;
using test_support::readFile;
using ::testing::StartsWith;

namespace fs = std::filesystem;

std::string text(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

std::string answerOf(PixelSize size) {
    return std::to_string(size.width) + ' ' + std::to_string(size.height) + " 0 0 0 0\n" +
           text(makeJpeg(size));
}

class Preview : public Companion {
protected:
    /// A photo with a preview of 160 pixels and one of 640.
    [[nodiscard]] std::string makePhotoOfTwo() const {
        return makePhoto("two.jpg",
                         {.thumbnail = makeJpeg({160, 120}), .larger = makeJpeg({480, 640})});
    }

    /// The size of the answer; 0 by 0 when there is none.
    [[nodiscard]] PixelSize answeredSize(const std::vector<std::string>& arguments) const {
        return takeApart(call(arguments).output).value_or(PreviewAnswer{}).size;
    }
};

TEST_F(Preview, IsTheHeaderALineFeedAndTheBytes) {
    const std::string photo = makePhoto("photo.jpg", {.thumbnail = makeJpeg({160, 120})});

    EXPECT_EQ(call({"-ep", photo, "160", "160"}), (ProgramEnd{0, answerOf({160, 120}), ""}));
}

TEST_F(Preview, IsTheSmallestThatIsLargeEnough) {
    const std::string photo = makePhotoOfTwo();

    EXPECT_EQ(answeredSize({"-ep", photo, "1", "1"}), (PixelSize{160, 120}));
    EXPECT_EQ(answeredSize({"-ep", photo, "160", "160"}), (PixelSize{160, 120}));
    EXPECT_EQ(answeredSize({"-ep", photo, "161", "161"}), (PixelSize{480, 640}));
    EXPECT_EQ(answeredSize({"-ep", photo, "640", "640"}), (PixelSize{480, 640}));
}

TEST_F(Preview, IsTheLargestWhereNoneIsLargeEnough) {
    const std::string photo = makePhotoOfTwo();

    EXPECT_EQ(answeredSize({"-ep", photo, "641", "641"}), (PixelSize{480, 640}));
    EXPECT_EQ(answeredSize({"-ep", photo, "2147483647", "2147483647"}), (PixelSize{480, 640}));
}

TEST_F(Preview, FollowsTheLargerOfTheTwoSizes) {
    const std::string photo = makePhotoOfTwo();

    EXPECT_EQ(answeredSize({"-ep", photo, "1", "640"}), (PixelSize{480, 640}));
    EXPECT_EQ(answeredSize({"-ep", photo, "640", "1"}), (PixelSize{480, 640}));
}

TEST_F(Preview, TakesAnyFormat) {
    const std::string photo = makePhotoOfTwo();

    EXPECT_EQ(answeredSize({"-ep", photo, "640", "640", "NEF"}), (PixelSize{480, 640}));
    EXPECT_EQ(answeredSize({"-ep", photo, "640", "640", ""}), (PixelSize{480, 640}));
}

TEST_F(Preview, PassesOverOneThatHoldsNoImage) {
    Bytes cut = makeJpeg({640, 480});
    cut.resize(100);
    const std::string photo =
        makePhoto("cut.jpg", {.thumbnail = makeJpeg({160, 120}), .larger = cut});

    EXPECT_EQ(answeredSize({"-ep", photo, "640", "640"}), (PixelSize{160, 120}));
}

TEST_F(Preview, ComesFromFilesOfAnyName) {
    for (const char* name : {"-ep", "http:", "gr\xc3\xbc\xc3\x9f e.jpg", "\xff\xfe\n.jpg", "pr"}) {
        const std::string photo = makePhoto(name, {.thumbnail = makeJpeg({160, 120})});
        EXPECT_EQ(call({"-ep", photo, "1", "1"}).output, answerOf({160, 120})) << name;
    }
}

TEST_F(Preview, TakesARelativeNameForAFileWhateverItLooksLike) {
    fs::create_directories(folder.path() / "http:" / "host");
    (void)makePhoto("http:/host/a.jpg", {.thumbnail = makeJpeg({160, 120})});
    (void)makePhoto("-", {.thumbnail = makeJpeg({160, 120})});
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    const ProgramEnd url = call({"-ep", "http://host/a.jpg", "1", "1"});
    const ProgramEnd dash = call({"-ep", "-", "1", "1"});
    fs::current_path(before);

    EXPECT_EQ(url, (ProgramEnd{0, answerOf({160, 120}), ""}));
    EXPECT_EQ(dash, (ProgramEnd{0, answerOf({160, 120}), ""}));
}

TEST_F(Preview, NeverAsksTheRealToolAndNeverWritesAFile) {
    const std::string photo = makePhotoOfTwo();
    const std::string bytes = readFile(photo);
    const std::set<fs::path> names = namesIn(folder.path());

    EXPECT_EQ(call({"-ep", photo, "640", "640"}).exitCode, 0);
    EXPECT_EQ(call({"-ep", photo, "x", "640"}).exitCode, 1);

    EXPECT_EQ(namesIn(folder.path()), names);
    EXPECT_EQ(readFile(photo), bytes);
    EXPECT_TRUE(real.calls().empty());
}

TEST_F(Preview, IsReadThroughALinkAndThroughCopies) {
    const std::string photo = makePhotoOfTwo();
    fs::create_directories(folder.path() / "copies");
    fs::create_symlink(COMPANION, folder.path() / "link.exe");
    fs::copy_file(COMPANION, folder.path() / "alone.exe");
    fs::copy_file(COMPANION, folder.path() / "copies" / "exiv2.exe");
    fs::copy_file(COMPANION_READER, folder.path() / "copies" / "exiv2-companion-reader");
    for (const char* program : {"link.exe", "alone.exe", "copies/exiv2.exe"}) {
        EXPECT_EQ(runProgram(folder.path() / program, {"-ep", photo, "1", "1"}).output,
                  answerOf({160, 120}))
            << program;
    }
}

TEST_F(Preview, PrefersTheReaderBesideTheProgram) {
    fs::copy_file(COMPANION, folder.path() / "exiv2.exe");
    const fs::path reader =
        folder.makeFile("exiv2-companion-reader", "#!/bin/sh\necho \"$@\"\nexit 5\n");
    ::chmod(reader.c_str(), 0700);

    EXPECT_EQ(runProgram(folder.path() / "exiv2.exe", {"-ep", "a b", "1", "2", "JPG"}),
              (ProgramEnd{5, "preview a b 1 2 JPG\n", ""}));
}

TEST_F(Preview, FailsWhereTheOutputIsFull) {
    const std::string photo = makePhotoOfTwo();

    const ProgramEnd end = runProgram(
        "/bin/sh", {"-c", "exec \"$@\" >/dev/full", "sh", COMPANION, "-ep", photo, "1", "1"});

    EXPECT_EQ(end.exitCode, 1);
    EXPECT_THAT(end.error, StartsWith("exiv2 companion: " + photo + ": can't write the output"));
}

struct FailureCase {
    const char* name;
    const char* file;
    std::vector<std::string> sizes;
    const char* message;
};

class PreviewFailure : public Companion, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(PreviewFailure, IsALineOnStandardErrorAndNoOutput) {
    (void)makePhoto("plain.jpg", {});
    (void)makePhoto("good.jpg", {.thumbnail = makeJpeg({160, 120})});
    (void)makePhoto("cut.jpg", {.thumbnail = Bytes(100)});
    (void)folder.makeFile("text.jpg", "no image");
    (void)folder.makeFile("empty.jpg", "");
    ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    const std::string file = (folder.path() / GetParam().file).native();
    std::vector<std::string> arguments = {"-ep", file};
    arguments.insert(arguments.end(), GetParam().sizes.begin(), GetParam().sizes.end());

    const ProgramEnd end = call(arguments);

    EXPECT_EQ(end.exitCode, 1);
    EXPECT_EQ(end.output, "");
    EXPECT_THAT(end.error, StartsWith("exiv2 companion: " + file + ": " + GetParam().message));
}

const FailureCase kFailures[] = {
    {"NoPreview", "plain.jpg", {"1", "1"}, "no preview\n"},
    {"PreviewWithoutAnImage", "cut.jpg", {"1", "1"}, "no preview"},
    {"MissingFile", "missing.jpg", {"1", "1"}, "there is no such regular file\n"},
    {"Folder", ".", {"1", "1"}, "there is no such regular file\n"},
    {"NamedPipe", "pipe", {"1", "1"}, "there is no such regular file\n"},
    {"NoImage", "text.jpg", {"1", "1"}, ""},
    {"EmptyFile", "empty.jpg", {"1", "1"}, ""},
    {"SizeOfLetters", "good.jpg", {"1", "abc"}, "not a size in pixels: abc\n"},
    {"SizeWithMore", "good.jpg", {"12x", "1"}, "not a size in pixels: 12x\n"},
    {"NegativeSize", "good.jpg", {"-1", "1"}, "not a size in pixels: -1\n"},
    {"SignedSize", "good.jpg", {"+1", "1"}, "not a size in pixels: +1\n"},
    {"SizeOfNothing", "good.jpg", {"0", "1"}, "not a size in pixels: 0\n"},
    {"EmptySize", "good.jpg", {"", "1"}, "not a size in pixels: \n"},
    {"SizeOf31Bits", "good.jpg", {"2147483648", "1"}, "not a size in pixels: 2147483648\n"},
    {"SizeBeyondAll", "good.jpg", {"1", "99999999999999999999", "JPG"}, "not a size in pixels: 9"},
};

INSTANTIATE_TEST_SUITE_P(Table, PreviewFailure, ::testing::ValuesIn(kFailures),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace companion_tests
