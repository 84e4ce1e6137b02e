#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "exiftool/host_program.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "product/code_page.h"
#include "real_exiftool/fresh_images.h"
#include "real_exiftool/real_tool.h"
#include "support/case_name.h"
#include "support/exported_text.h"
#include "support/read_file.h"
#include "support/run_program.h"
#include "support/skip_or_fail.h"
#include "support/this_process.h"
#include "support/tool_directory.h"

/// Photos and folders of any name, through the exported interface and our exiv2.exe and the real
/// ExifTool, under whichever code page this runs.
namespace product {

namespace fs = std::filesystem;
using test_support::TemporaryDirectory;
using test_support::utf8;

namespace {

/// A name, and what it is in those code pages that have all of its characters.
struct Name {
    std::string name;
    std::u8string text;
    std::map<unsigned, std::string> narrow = {};  ///< by code page, plain ASCII left out
};

void PrintTo(const Name& name, std::ostream* stream) {
    *stream << name.name;
}

constexpr bool kIsWindows = fs::path::preferred_separator == '\\';

std::vector<Name> names() {
    return {
        {"Latin", u8"B\u00E4r", {{1252, "B\xE4r"}}},
        {"Cyrillic",
         u8"\u0424\u043E\u0442\u043E",
         {{1251, "\xD4\xEE\xF2\xEE"}, {932, "\x84\x55\x84\x80\x84\x84\x84\x80"}}},
        {"Japanese", u8"\u5199\u771F", {{932, "\x8E\xCA\x90\x5E"}}},
        // The second byte of each is that of a backslash.
        {"JapaneseWithBackslashBytes", u8"\u8868\u30BD", {{932, "\x95\x5C\x83\x5C"}}},
        {"Emoji", u8"\U0001F4F7"},
        {"CombiningAccent", u8"e\u0301"},
        {"BlanksAndSigns", u8"a  b %PATH% !x! ^&' [1](2){3},=+@#$~`"},
        {"Semicolon", u8"a;b"},
        {"DotAtTheEnd", u8"photo."},
    };
}

/// Plain ASCII is the same in every code page, and UTF-8's has every character.
bool isNarrowAsItIs(const Name& name) {
    return narrowCodePage() == kUtf8CodePage ||
           std::all_of(name.text.begin(), name.text.end(), [](char8_t c) { return c < 0x80; });
}

/// The bytes of a narrow path; empty where the code page lacks a character.
std::string narrowBytes(const Name& name) {
    const auto known = name.narrow.find(narrowCodePage());
    return known != name.narrow.end() ? known->second
           : isNarrowAsItIs(name)     ? std::string(name.text.begin(), name.text.end())
                                      : std::string();
}

fs::path oursFolder() {
    return fs::path(EXIV2_TOOL).parent_path();
}

std::string summaryOf(const fs::path& photo) {
    std::string text;
    exiv2_wp::createImageMetadata(
        photo, [&](const exiv2_wp::SExivMetadataInfo& info) { text = test_support::toText(info); });
    return text;
}

std::string previewOf(const fs::path& photo) {
    std::string preview;
    const auto take = [&](const unsigned char* bytes, std::uint64_t count, auto&&...) {
        preview.assign(bytes, bytes + count);
        return true;
    };
    exiv2_wp::TopBottomOffset offset;
    static_cast<void>(exiv2_wp::readExiv2Thumbnail(
        photo, "", 1, 1, offset, [](int, int, int) {}, [](int) {}, take, take));
    return preview;
}

std::string modelByExiftool(const fs::path& photo) {
    const auto tags = exiftool::readTags(photo, "-Model");
    const auto model = tags.find("Model");
    return model == tags.end() ? std::string() : model->second;
}

std::string modelBy(const exiv2_wp::ExivReader& reader) {
    std::string model;
    return reader.getRawExifTag("Exif.Image.Model", model) ? model : std::string();
}

const std::string kModel = "Canon EOS 6D";

/// Our tool and the real ExifTool, which stays from the first test to the last.
class WithTools : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        ASSERT_TRUE(exiv2_wp::initialize(oursFolder()));
        static_cast<void>(exiftool::initialize(test_support::realToolFolder()));
    }
    void SetUp() override {
        if (test_support::realToolFolder().empty()) {
            SKIP_OR_FAIL("the real exiftool is missing");
        }
    }

    [[nodiscard]] std::string tagBytesByPhotoinfo(const fs::path& photo) const {
        const test_support::ProgramResult result = test_support::runProgram(
            PHOTOINFO,
            test_support::nativeArguments({"--tools", utf8(oursFolder()), "tag", utf8(photo),
                                           "Exif.Photo.ExifVersion", "--json"}),
            folder.path());
        EXPECT_EQ(result.exitCode, 0) << result.error;
        const auto document = nlohmann::json::parse(result.output, nullptr, false);
        return document.is_array() ? document.at(0).at("tag").at("bytes").dump() : result.output;
    }

    void expectTheSample(const fs::path& photo) const {
        static const std::string summary = summaryOf(SAMPLE);
        static const std::string preview = previewOf(SAMPLE);

        EXPECT_EQ(exiv2_wp::readAhead({photo}), 1U);
        EXPECT_EQ(summaryOf(photo), summary);
        EXPECT_TRUE(!preview.empty() && previewOf(photo) == preview);
        EXPECT_EQ(tagBytesByPhotoinfo(photo), "\"30323332\"");
        EXPECT_EQ(modelByExiftool(photo), kModel);
    }

    void expectACopy(const fs::path& photo, const fs::path& image) const {
        std::ofstream(literalPath(image), std::ios::binary) << test_support::freshJpeg();

        EXPECT_TRUE(exiftool::copyMetadata(photo, image, exiftool::ExportMetadataParameters{}));
        EXPECT_EQ(modelByExiftool(image), kModel);
        EXPECT_NE(summaryOf(image), "");
    }

    TemporaryDirectory folder{"product-names-"};
};

// ---- photos

class PhotoNamed : public WithTools, public ::testing::WithParamInterface<Name> {
protected:
    PhotoNamed() { fs::copy_file(SAMPLE, photo); }

    const fs::path photo = folder.path() / (GetParam().text + u8".jpg");
};

TEST_P(PhotoNamed, IsReadByBothTools) {
    expectTheSample(photo);
}

TEST_P(PhotoNamed, GivesItsMetadataToACopyNamedAlike) {
    expectACopy(photo, folder.path() / (u8"copy " + GetParam().text + u8".jpg"));
}

TEST_P(PhotoNamed, IsReadByANarrowNameWhereTheCodePageHasIt) {
    const std::string narrow = narrowBytes(GetParam());
    const std::string name = narrow.empty() ? "?" : narrow;

    const exiv2_wp::ExivReader reader(utf8(folder.path()) + "/" + name + ".jpg");

    EXPECT_EQ(modelBy(reader), narrow.empty() ? "" : kModel);
}

INSTANTIATE_TEST_SUITE_P(Product, PhotoNamed, ::testing::ValuesIn(names()),
                         test_support::caseName<Name>);

// ---- long paths

class PhotoOnALongPath : public WithTools {
protected:
    PhotoOnALongPath() {
        while (deep.native().size() < 300) {
            deep /= std::string(60, 'd');
        }
        fs::create_directories(literalPath(deep));
        fs::copy_file(SAMPLE, literalPath(deep / "photo.jpg"));
    }

    fs::path deep = folder.path();
};

TEST_F(PhotoOnALongPath, IsReadByBothTools) {
    expectTheSample(deep / "photo.jpg");
}

TEST_F(PhotoOnALongPath, GivesItsMetadataToACopy) {
    expectACopy(deep / "photo.jpg", deep / "copy.jpg");
}

TEST_F(PhotoOnALongPath, IsReadByItsLiteralPath) {
    expectTheSample(literalPath(deep / "photo.jpg"));
}

TEST_F(PhotoOnALongPath, GivesItsMetadataToACopyByLiteralPaths) {
    expectACopy(literalPath(deep / "photo.jpg"), literalPath(deep / "copy.jpg"));
}

// ---- the folder of the tools

class ToolFolderNamed : public ::testing::TestWithParam<Name> {
protected:
    // Copied once; the tests move it.
    static void SetUpTestSuite() {
        place_ = new TemporaryDirectory("product-tools-");
        if (!test_support::realToolFolder().empty()) {
            test_support::copyRealToolTo(place_->path() / "tools");
            fs::copy_file(EXIV2_TOOL, place_->path() / "tools" / "exiv2.exe");
        }
    }
    static void TearDownTestSuite() { delete place_; }

    void SetUp() override {
        if (test_support::realToolFolder().empty()) {
            SKIP_OR_FAIL("the real exiftool is missing");
        }
        fs::rename(place_->path() / "tools", tools);
        fs::copy_file(SAMPLE, photo);
    }
    void TearDown() override { fs::rename(tools, place_->path() / "tools"); }

    const fs::path tools = place_->path() / GetParam().text;
    TemporaryDirectory folder{"product-names-"};
    const fs::path photo = folder.path() / "photo.jpg";

private:
    static inline TemporaryDirectory* place_ = nullptr;
};

// Its path is narrowed and read as UTF-8 again, which only a UTF-8 code page survives.
TEST_P(ToolFolderNamed, HoldsAnExiv2ThatRunsUnlessTheNameIsBeyondAscii) {
    const bool runs = isNarrowAsItIs(GetParam());

    EXPECT_EQ(exiv2_wp::initialize(tools), runs);
    EXPECT_EQ(!summaryOf(photo).empty(), runs);
}

// By the folder's 8.3 name. Wine tells a program its long path even so, in whose code page ExifTool
// looks for its files, byte by byte: a semicolon ends a part of its search path, and a backslash is
// one even as the second byte of a character.
TEST_P(ToolFolderNamed, HoldsAnExiftoolThatRunsWhereTheCodePageHasThePlainName) {
    const test_support::EnvironmentVariable silence("PERL_BADLANG", "0");
    const std::string narrow = narrowBytes(GetParam());
    const bool isPlain = !kIsWindows || narrow.find_first_of(";\\") == std::string::npos;

    const std::string output =
        test_support::runHost({"init", utf8(tools), "tags", utf8(photo), "-Model"}).output;

    EXPECT_EQ(output.ends_with("tags Model=" + kModel + "\n"), isPlain && !narrow.empty())
        << output;
}

INSTANTIATE_TEST_SUITE_P(Product, ToolFolderNamed, ::testing::ValuesIn(names()),
                         test_support::caseName<Name>);

// ---- the code page

TEST(CodePage, IsTheOneThatTheTestsAreRunFor) {
    const char* const expected = std::getenv("EXIV2_WRAPPER_CODE_PAGE");
    if (expected == nullptr) {
        SKIP_OR_FAIL("EXIV2_WRAPPER_CODE_PAGE doesn't say under which code page this runs");
    }
    EXPECT_EQ(std::to_string(narrowCodePage()), expected);
}

}  // namespace
}  // namespace product
