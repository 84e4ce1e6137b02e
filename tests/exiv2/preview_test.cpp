// SPDX-License-Identifier: GPL-2.0-or-later
#include <sstream>

#include "exiv2/payload.h"
#include "exiv2/tool_fixture.h"
#include "support/every_nth.h"
#include "support/photo_list.h"
#include "support/read_file.h"
#include "support/skip_or_fail.h"

namespace exiv2_tool {
namespace {

using test_support::readFile;
using ::testing::StartsWith;

namespace fs = std::filesystem;

/// A preview answer, taken apart.
struct PreviewAnswer {
    PixelSize size = {};
    std::string payload = {};
};

/// None unless the output is "width height 0 0 0 0", a line feed and at least a byte.
std::optional<PreviewAnswer> takeApart(const std::string& output) {
    const std::size_t lineEnd = output.find('\n');
    if (lineEnd == std::string::npos || lineEnd + 1 == output.size()) {
        return std::nullopt;
    }
    PreviewAnswer answer{.payload = output.substr(lineEnd + 1)};
    std::istringstream(output) >> answer.size.width >> answer.size.height;
    const std::string header =
        std::to_string(answer.size.width) + ' ' + std::to_string(answer.size.height) + " 0 0 0 0";
    return output.substr(0, lineEnd) == header ? std::optional(answer) : std::nullopt;
}

/// Whether the payload is an image of the announced size.
bool holdsTheAnnouncedImage(const PreviewAnswer& answer) {
    const bool isJpeg = answer.payload.starts_with("\xff\xd8");
    const Bytes bytes(answer.payload.begin(), answer.payload.end());
    return payloadSize(bytes, isJpeg ? "image/jpeg" : "image/tiff", answer.size) == answer.size;
}

std::string text(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

std::string answerOf(PixelSize size) {
    return std::to_string(size.width) + ' ' + std::to_string(size.height) + " 0 0 0 0\n" +
           text(makeJpeg(size));
}

class Preview : public ToolTest {
protected:
    /// A photo with a preview of 160 pixels and one of 640.
    [[nodiscard]] fs::path makePhotoOfTwo() const {
        return makePhoto("two.jpg",
                         {.thumbnail = makeJpeg({160, 120}), .larger = makeJpeg({480, 640})});
    }

    /// The size of the answer; 0 by 0 when there is none.
    [[nodiscard]] PixelSize answeredSize(const Call& arguments) const {
        return takeApart(call(arguments).output).value_or(PreviewAnswer{}).size;
    }
};

TEST_F(Preview, IsTheHeaderALineFeedAndTheBytes) {
    const fs::path photo = makePhoto("photo.jpg", {.thumbnail = makeJpeg({160, 120})});

    EXPECT_EQ(call({"-ep", photo, "160", "160"}), (ProgramResult{0, answerOf({160, 120}), ""}));
}

TEST_F(Preview, IsTheSmallestThatIsLargeEnough) {
    const fs::path photo = makePhotoOfTwo();

    EXPECT_EQ(answeredSize({"-ep", photo, "1", "1"}), (PixelSize{160, 120}));
    EXPECT_EQ(answeredSize({"-ep", photo, "160", "160"}), (PixelSize{160, 120}));
    EXPECT_EQ(answeredSize({"-ep", photo, "161", "161"}), (PixelSize{480, 640}));
    EXPECT_EQ(answeredSize({"-ep", photo, "640", "640"}), (PixelSize{480, 640}));
}

TEST_F(Preview, IsTheLargestWhereNoneIsLargeEnough) {
    const fs::path photo = makePhotoOfTwo();

    EXPECT_EQ(answeredSize({"-ep", photo, "641", "641"}), (PixelSize{480, 640}));
    EXPECT_EQ(answeredSize({"-ep", photo, "2147483647", "2147483647"}), (PixelSize{480, 640}));
}

TEST_F(Preview, FollowsTheLargerOfTheTwoSizes) {
    const fs::path photo = makePhotoOfTwo();

    EXPECT_EQ(answeredSize({"-ep", photo, "1", "640"}), (PixelSize{480, 640}));
    EXPECT_EQ(answeredSize({"-ep", photo, "640", "1"}), (PixelSize{480, 640}));
}

TEST_F(Preview, TakesAnyFormat) {
    const fs::path photo = makePhotoOfTwo();

    EXPECT_EQ(answeredSize({"-ep", photo, "640", "640", "NEF"}), (PixelSize{480, 640}));
    EXPECT_EQ(answeredSize({"-ep", photo, "640", "640", ""}), (PixelSize{480, 640}));
}

TEST_F(Preview, PassesOverOneThatHoldsNoImage) {
    Bytes cut = makeJpeg({640, 480});
    cut.resize(100);
    const fs::path photo = makePhoto("cut.jpg", {.thumbnail = makeJpeg({160, 120}), .larger = cut});

    EXPECT_EQ(answeredSize({"-ep", photo, "640", "640"}), (PixelSize{160, 120}));
}

TEST_F(Preview, WritesNoFile) {
    const fs::path photo = makePhotoOfTwo();
    const std::string bytes = readFile(photo);
    const std::set<fs::path> names = namesIn(folder.path());

    EXPECT_EQ(call({"-ep", photo, "640", "640"}).exitCode, 0);
    EXPECT_EQ(call({"-ep", photo, "x", "640"}).exitCode, 1);

    EXPECT_EQ(namesIn(folder.path()), names);
    EXPECT_EQ(readFile(photo), bytes);
}

struct FailureCase {
    const char* name;
    const char* file;
    std::vector<std::string> sizes;
    const char* message;
};

class PreviewFailure : public ToolTest, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(PreviewFailure, IsALineOnStandardErrorAndNoOutput) {
    (void)makePhoto("plain.jpg", {});
    (void)makePhoto("good.jpg", {.thumbnail = makeJpeg({160, 120})});
    (void)makePhoto("cut.jpg", {.thumbnail = Bytes(100)});
    (void)folder.makeFile("text.jpg", "no image");
    (void)folder.makeFile("empty.jpg", "");
    const fs::path file = folder.path() / GetParam().file;
    Call arguments = {"-ep", file};
    arguments.insert(arguments.end(), GetParam().sizes.begin(), GetParam().sizes.end());

    const ProgramResult end = call(arguments);

    EXPECT_EQ(end.exitCode, 1);
    EXPECT_EQ(end.output, "");
    EXPECT_THAT(end.error, StartsWith("exiv2.exe: " + file.string() + ": " + GetParam().message));
}

const FailureCase kFailures[] = {
    {"NoPreview", "plain.jpg", {"1", "1"}, "no preview\n"},
    {"PreviewWithoutAnImage", "cut.jpg", {"1", "1"}, "no preview"},
    {"NoImage", "text.jpg", {"1", "1"}, ""},
    {"EmptyFile", "empty.jpg", {"1", "1"}, ""},
    {"SizeOfLetters", "good.jpg", {"1", "abc"}, "not a size in pixels: abc\n"},
    {"SizeWithMore", "good.jpg", {"12x", "1"}, "not a size in pixels: 12x\n"},
    {"NegativeSize", "good.jpg", {"-1", "1"}, "not a size in pixels: -1\n"},
    {"SignedSize", "good.jpg", {"+1", "1"}, "not a size in pixels: +1\n"},
    {"SizeOfNothing", "good.jpg", {"0", "1"}, "not a size in pixels: 0\n"},
    {"EmptySize", "good.jpg", {"", "1"}, "not a size in pixels:\n"},
    {"SizeOf31Bits", "good.jpg", {"2147483648", "1"}, "not a size in pixels: 2147483648\n"},
    {"SizeBeyondAll", "good.jpg", {"1", "99999999999999999999", "JPG"}, "not a size in pixels: 9"},
};

INSTANTIATE_TEST_SUITE_P(Table, PreviewFailure, ::testing::ValuesIn(kFailures),
                         [](const auto& row) { return row.param.name; });

class PhotoPreview : public ToolTest, public ::testing::WithParamInterface<fs::path> {};

TEST_P(PhotoPreview, IsAnImageOfTheAnnouncedSize) {
    if (GetParam().empty()) {
        SKIP_OR_FAIL("no photos in " PHOTOS);
    }
    const ProgramResult result = call({"-ep", GetParam(), "100", "100"});
    if (result.exitCode != 0) {
        EXPECT_EQ(result.output, "");
        return;
    }
    const std::optional<PreviewAnswer> answer = takeApart(result.output);
    ASSERT_TRUE(answer.has_value());
    EXPECT_TRUE(holdsTheAnnouncedImage(*answer));
}

INSTANTIATE_TEST_SUITE_P(Photos, PhotoPreview, ::testing::ValuesIn(test_support::listFiles(PHOTOS)),
                         test_support::photoName);

class RawFile : public Preview {
protected:
    void SetUp() override {
        if (!fs::is_directory(PHOTOS)) {
            SKIP_OR_FAIL("no photos in " PHOTOS);
        }
    }
};

TEST_F(RawFile, GivesTheOneOfTwoPreviewsThatSuits) {
    const fs::path file = fs::path(PHOTOS) / "FujiFilm.raf";

    EXPECT_EQ(answeredSize({"-ep", file, "8", "8", "raf"}), (PixelSize{8, 8}));
    EXPECT_EQ(answeredSize({"-ep", file, "9", "9", "raf"}), (PixelSize{160, 120}));
    EXPECT_EQ(answeredSize({"-ep", file, "1000", "1000", "raf"}), (PixelSize{160, 120}));
}

TEST_F(RawFile, GivesNoPreviewWhosePixelsAreMissing) {
    const fs::path file = fs::path(PHOTOS) / "CanonRaw.cr2";

    EXPECT_EQ(call({"-ep", file, "1", "1"}),
              (ProgramResult{
                  1, "", "exiv2.exe: " + file.string() + ": no preview that holds an image\n"}));
}

TEST_F(RawFile, CutAnywhereGivesAnImageOrAFailure) {
    const std::string bytes = readFile(fs::path(PHOTOS) / "FujiFilm.raf");
    ASSERT_FALSE(bytes.empty());
    constexpr std::size_t kCuts = 40 / test_support::kEveryNthRun;
    for (std::size_t size = 0; size < bytes.size(); size += bytes.size() / kCuts) {
        const fs::path file = folder.makeFile("cut.raf", bytes.substr(0, size));
        const ProgramResult result = call({"-ep", file, "100", "100"});
        const std::optional<PreviewAnswer> answer = takeApart(result.output);
        EXPECT_TRUE(answer ? result.exitCode == 0 && holdsTheAnnouncedImage(*answer)
                           : result.exitCode == 1 && result.output.empty())
            << size;
    }
}

}  // namespace
}  // namespace exiv2_tool
