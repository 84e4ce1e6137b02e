#include <algorithm>
#include <set>

#include "photoinfo/photoinfo_fixture.h"
#include "support/read_file.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.insert(shown(entry.path().filename()));
    }
    return names;
}

class PhotoinfoPreview : public PhotoinfoTest {
protected:
    // The photo's own answer goes before the one for whatever else is asked about.
    fs::path makePhoto(const Answer& preview) {
        fs::path photo = tool.makeFile("photo.jpg", "the photo");
        tool.answer({"-ep", shown(photo)}, preview);
        tool.answer({"-ep"}, {.output = "8 8 0 0 0 0\nprobe"});
        return photo;
    }
    [[nodiscard]] ProgramResult preview(const fs::path& photo, const fs::path& target,
                                        std::vector<NativeString> more = {}) const {
        more.insert(more.begin(),
                    {native("preview"), photo.native(), native("-o"), target.native()});
        return photoinfo(more);
    }

    TemporaryDirectory results;
    fs::path output = results.path() / "preview.jpg";
};

TEST_F(PhotoinfoPreview, WritesThePreviewIntoAFile) {
    const auto photo = makePhoto({.output = "160 107 0 0 0 0\nthe preview"});

    EXPECT_EQ(preview(photo, output), (ProgramResult{0,
                                                     shown(photo) +
                                                         "\n"
                                                         "  Preview             160 x 107 pixels\n"
                                                         "  Written             " +
                                                         shown(output) + ", 11 bytes\n",
                                                     ""}));
    EXPECT_EQ(readFile(output), "the preview");
    EXPECT_EQ(namesIn(results.path()), std::set<std::string>{"preview.jpg"});
}

TEST_F(PhotoinfoPreview, TellsOfItInJson) {
    const auto photo = makePhoto({.output = "160 120 0 1 6 7\nthe preview"});

    const Json expected = {{"width", 160},   {"height", 120},           {"rowsAbove", 6},
                           {"rowsBelow", 7}, {"output", shown(output)}, {"size", 11}};
    EXPECT_EQ(preview(photo, output, {native("--json")}), jsonOfOne(photo, "preview", expected));
}

TEST_F(PhotoinfoPreview, AsksForTheWantedSize) {
    const auto photo = makePhoto({.output = "160 107 0 0 0 0\nthe preview"});

    (void)preview(photo, output, {native("--size"), native("120")});

    EXPECT_EQ(tool.calls().back(), (Arguments{native("-ep"), photo.native(), native("120"),
                                              native("120"), native("jpg")}));
}

TEST_F(PhotoinfoPreview, AsksForTheLargestUnlessToldASize) {
    const auto photo = makePhoto({.output = "160 107 0 0 0 0\nthe preview"});

    (void)preview(photo, output);

    EXPECT_EQ(tool.calls().back(), (Arguments{native("-ep"), photo.native(), native("65535"),
                                              native("65535"), native("jpg")}));
}

TEST_F(PhotoinfoPreview, ReplacesAnEarlierOne) {
    const auto photo = makePhoto({.output = "160 107 0 0 0 0\nthe preview"});
    results.makeFile("preview.jpg", "an earlier, longer preview");

    EXPECT_EQ(preview(photo, output).exitCode, 0);
    EXPECT_EQ(readFile(output), "the preview");
}

TEST_F(PhotoinfoPreview, RefusesToReplaceThePhoto) {
    const auto photo = makePhoto({.output = "160 107 0 0 0 0\nthe preview"});
    const fs::path disguised = photo.parent_path() / "." / photo.filename();

    EXPECT_EQ(preview(photo, disguised),
              (ProgramResult{4, "",
                             "photoinfo: " + shown(photo) +
                                 ": the preview would replace the photo itself\n"}));
    EXPECT_EQ(readFile(photo), "the photo");
}

TEST_F(PhotoinfoPreview, RefusesToReplaceAFolder) {
    const auto photo = makePhoto({.output = "160 107 0 0 0 0\nthe preview"});

    EXPECT_EQ(preview(photo, results.path()),
              (ProgramResult{4, "",
                             "photoinfo: " + shown(photo) + ": " + shown(results.path()) +
                                 " is no regular file, and is not replaced\n"}));
}

TEST_F(PhotoinfoPreview, SaysThatTheFileCannotBeWritten) {
    const auto photo = makePhoto({.output = "160 107 0 0 0 0\nthe preview"});
    const fs::path nowhere = results.path() / "nowhere" / "preview.jpg";

    EXPECT_EQ(
        preview(photo, nowhere),
        (ProgramResult{
            4, "", "photoinfo: " + shown(photo) + ": " + shown(nowhere) + " cannot be written\n"}));
}

TEST_F(PhotoinfoPreview, SaysThatThereIsNone) {
    const auto photo = makePhoto({.exitCode = 1});

    EXPECT_EQ(
        preview(photo, output),
        (ProgramResult{4, "", "photoinfo: " + shown(photo) + ": exiv2 finds no preview in it\n"}));
    EXPECT_EQ(namesIn(results.path()), std::set<std::string>{});
}

TEST_F(PhotoinfoPreview, NeverAsksAToolThatDoesNotKnowTheCallAboutThePhoto) {
    const auto photo = tool.makeFile("photo.jpg");
    tool.answer({"-ep"}, {.exitCode = 1});

    EXPECT_EQ(preview(photo, output),
              (ProgramResult{6, "",
                             "photoinfo: this exiv2.exe does not know the call that extracts "
                             "previews; the one of this project does\n"}));
    for (const Arguments& call : tool.calls()) {
        EXPECT_EQ(std::count(call.begin(), call.end(), photo.native()), 0);
    }
}

TEST_F(PhotoinfoPreview, LeavesNoTemporaryFolderBehind) {
    const auto photo = makePhoto({.output = "160 107 0 0 0 0\nthe preview"});

    (void)preview(photo, output);

    const auto calls = tool.calls();
    const auto probed = std::find_if(calls.begin(), calls.end(), [&](const Arguments& call) {
        return call.front() == native("-ep") && call.at(1) != photo.native();
    });
    ASSERT_NE(probed, calls.end());
    EXPECT_FALSE(fs::exists(fs::path(probed->at(1)).parent_path()));
}

TEST_F(PhotoinfoPreview, NeedsAPlaceToWriteTo) {
    EXPECT_EQ(photoinfo({native("preview"), native("photo.jpg")}),
              (ProgramResult{2, "", "photoinfo: --output is required; --help tells more\n"}));
}

TEST_F(PhotoinfoPreview, RefusesASizeThatIsNoneOfAPicture) {
    const auto photo = makePhoto({.output = "160 107 0 0 0 0\nthe preview"});

    EXPECT_EQ(preview(photo, output, {native("--size"), native("0")}).exitCode, 2);
    EXPECT_EQ(preview(photo, output, {native("--size"), native("large")}).exitCode, 2);
}

}  // namespace
}  // namespace test_support
