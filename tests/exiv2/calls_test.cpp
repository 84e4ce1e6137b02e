// SPDX-License-Identifier: GPL-2.0-or-later
#include <string_view>

#include "exiv2/libexiv2.h"
#include "exiv2/tool_fixture.h"
#include "support/current_directory.h"
#include "support/read_file.h"

namespace exiv2_tool {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace fs = std::filesystem;

constexpr std::string_view kMakeLine =
    "Exif.Image.Make                              Ascii       7  Camera\n";

class Calls : public ToolTest {
protected:
    [[nodiscard]] fs::path makePhoto(std::string_view name = "photo.jpg") const {
        return ToolTest::makePhoto(name, {});
    }
};

TEST_F(Calls, TellTheVersionOfLibexiv2First) {
    const ProgramResult result = call({"--version"});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.output, StartsWith(std::string("exiv2 ") + Exiv2::version() + "\n"));
    EXPECT_THAT(result.output, HasSubstr("exiv2_wrapper"));
    EXPECT_THAT(result.output, HasSubstr("GPL-2.0-or-later"));
}

TEST_F(Calls, PrintAllEntries) {
    EXPECT_THAT(call({"-PXEkycv", "-q", makePhoto()}).output, HasSubstr(kMakeLine));
}

TEST_F(Calls, PrintTheBytesOfAValueAndNothingElse) {
    EXPECT_EQ(call({"--key", "Exif.Image.Make", "--Print", "kh", makePhoto()}),
              (ProgramResult{0, "Exif.Image.Make 43 61 6d 65 72 61 00\n", ""}));
}

TEST_F(Calls, PrintAnInterpretedValue) {
    EXPECT_EQ(call({"--key", "Exif.Image.Make", "--Print", "kt", makePhoto()}),
              (ProgramResult{0, "Exif.Image.Make                               Camera\n", ""}));
}

TEST_F(Calls, FailForAKeyThatIsNotThere) {
    const fs::path photo = makePhoto();
    for (const char* flags : {"kh", "kt"}) {
        const ProgramResult result = call({"--key", "Exif.Image.Model", "--Print", flags, photo});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.error,
                  "exiv2.exe: " + photo.string() + ": there is no Exif.Image.Model\n");
    }
}

TEST_F(Calls, LeaveOutMakerNoteBlobs) {
    const fs::path photo = folder.makeFile(
        "photo.jpg", photoBytes({.tags = {{"Exif.Photo.MakerNote", "1 2 3 4 5 6 7 8 9 10"}}}));

    const std::string output = call({"-PXEkycv", "-q", photo}).output;

    EXPECT_THAT(output, HasSubstr(kMakeLine));
    EXPECT_EQ(output.find("MakerNote"), std::string::npos);
    EXPECT_THAT(call({"--key", "Exif.Photo.MakerNote", "--Print", "kh", photo}).output,
                StartsWith("Exif.Photo.MakerNote 01 02 03"));
}

class OtherCalls : public ToolTest, public ::testing::WithParamInterface<Call> {};

TEST_P(OtherCalls, AreRefusedInALineThatNamesTheForms) {
    const ProgramResult result = call(GetParam());

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.error, StartsWith("exiv2.exe: the calls are --version; "));
    EXPECT_THAT(result.error, HasSubstr("-ep FILE SIZE SIZE FORMAT"));
    EXPECT_THAT(result.error, HasSubstr("https://exiv2.org\n"));
    EXPECT_EQ(result.error.find('\n'), result.error.size() - 1);
}

const Call kOtherCalls[] = {
    {},
    {""},
    {"-h"},
    {"--version", "x"},
    {"-PXEkycv", "a.jpg"},
    {"-PXEkycv", "-q"},
    {"-PXEkycv", "-q", "a.jpg", "b.jpg"},
    {"-PEkycv", "-q", "a.jpg"},
    {"pr"},
    {"PR", "a.jpg"},
    {"pr", "a.jpg", "b.jpg"},
    {"a.jpg"},
    {"--key", "Exif.Image.Make", "--Print", "v", "a.jpg"},
    {"--key", "Exif.Image.Make", "--Print", "kh"},
    {"-ep", "a.jpg"},
    {"-ep", "a.jpg", "1"},
    {"-ep", "a.jpg", "1", "1", "JPG", "more"},
    {"-ep1", "a.jpg", "1", "1"},
    {"rm", "a.jpg"},
    {"--read"},
};

INSTANTIATE_TEST_SUITE_P(Table, OtherCalls, ::testing::ValuesIn(kOtherCalls));

class UnreadableFiles : public ToolTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(UnreadableFiles, AreAnErrorInOneLineWhateverTheCall) {
    (void)folder.makeFile("text.jpg", "no image");
    (void)folder.makeFile("empty.jpg", "");
    const fs::path file = folder.path() / GetParam();
    for (const Call& arguments :
         {Call{"-PXEkycv", "-q", file}, Call{"pr", file},
          Call{"--key", "Exif.Image.Make", "--Print", "kh", file}, Call{"-ep", file, "1", "1"}}) {
        const ProgramResult result = call(arguments);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.error, StartsWith("exiv2.exe: " + file.string() + ": "));
        EXPECT_EQ(result.error.find('\n'), result.error.size() - 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, UnreadableFiles,
                         ::testing::Values("missing.jpg", "text.jpg", "empty.jpg", "."));

TEST_F(Calls, TakeFilesOfAnyName) {
    for (const std::string_view name :
         {"-ep", "pr", "http", "gr\xc3\xbc\xc3\x9f e.jpg", "\xd1\x84\xd0\xbe\xd1\x82\xd0\xbe.jpg",
          "\xe5\x86\x99\xe7\x9c\x9f.jpg", "\xf0\x9f\x93\xb7.jpg"}) {
        EXPECT_THAT(call({"-PXEkycv", "-q", makePhoto(name)}).output, HasSubstr(kMakeLine)) << name;
    }
}

TEST_F(Calls, TakeARelativeNameForAFileWhateverItLooksLike) {
    (void)makePhoto("-");
    const test_support::CurrentDirectory inside(folder.path());

    EXPECT_THAT(call({"-PXEkycv", "-q", "-"}).output, HasSubstr(kMakeLine));
}

TEST_F(Calls, LeaveThePhotoAsItWas) {
    const fs::path photo = makePhoto();
    const std::string bytes = test_support::readFile(photo);
    const fs::file_time_type time = fs::last_write_time(photo);
    const std::set<fs::path> names = namesIn(folder.path());
    fs::permissions(photo, fs::perms::owner_read);

    EXPECT_EQ(call({"-PXEkycv", "-q", photo}).exitCode, 0);
    EXPECT_EQ(call({"pr", photo}).exitCode, 0);

    EXPECT_EQ(test_support::readFile(photo), bytes);
    EXPECT_EQ(fs::last_write_time(photo), time);
    EXPECT_EQ(namesIn(folder.path()), names);
    fs::permissions(photo, fs::perms::owner_all);
}

}  // namespace
}  // namespace exiv2_tool
