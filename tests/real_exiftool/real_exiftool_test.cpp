#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "exiv2_wrapper/exiftool/tag_reader.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "real_exiftool/fresh_images.h"
#include "real_exiftool/real_tool.h"
#include "support/photo_list.h"
#include "support/skip_or_fail.h"

namespace exiftool {
namespace {

using test_support::listFiles;
using test_support::realToolFolder;
using test_support::runRealTool;
using test_support::TemporaryDirectory;
using test_support::utf8;
using Json = nlohmann::json;
using Tags = std::unordered_map<std::string, std::string>;

const std::vector<std::string> kTagArguments = {
    "-Make",         "-Model",        "-LensID",      "-Lens",  "-FNumber",
    "-ExposureTime", "-ISO",          "-FocalLength", "-Flash", "-DateTimeOriginal",
    "-Orientation",  "-SerialNumber", "-Software",    "-Rating"};

// What the tool prints of all photos in one run, in their order, read apart from the library's own
// reader.
std::vector<Tags> printTags(const std::vector<std::filesystem::path>& files) {
    std::vector<std::string> arguments = kTagArguments;
    arguments.emplace_back("-s2");
    for (const std::filesystem::path& file : files) {
        arguments.push_back(utf8(file));
    }
    std::istringstream lines(runRealTool(arguments).output);
    std::vector<Tags> printed;
    for (std::string line; std::getline(lines, line);) {
        const auto colon = line.find(": ");
        if (line.starts_with("======== ")) {
            printed.emplace_back();
        } else if (colon != std::string::npos && !printed.empty()) {
            printed.back()[line.substr(0, colon)] = line.substr(colon + 2);
        }
    }
    return printed;
}

const Tags& tagsPrintedFor(const std::filesystem::path& file) {
    static const std::vector<std::filesystem::path> files = listFiles(PHOTOS);
    static const std::vector<Tags> printed = printTags(files);
    const auto place = std::find(files.begin(), files.end(), file) - files.begin();
    return printed.at(static_cast<std::size_t>(place));
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

// One object a file: the tags by group and name, numbers as the file has them.
Json readBack(const std::vector<std::filesystem::path>& files,
              std::vector<std::string> arguments = {}) {
    arguments.insert(arguments.end(), {"-j", "-n", "-G1", "-a"});
    for (const std::filesystem::path& file : files) {
        arguments.push_back(utf8(file));
    }
    return Json::parse(runRealTool(arguments).output);
}

class RealExiftool : public ::testing::Test {
protected:
    void SetUp() override {
        if (realToolFolder().empty()) {
            SKIP_OR_FAIL("the real exiftool is missing");
        }
        ASSERT_TRUE(initialize(realToolFolder()));
    }
};

class RealPhoto : public RealExiftool, public ::testing::WithParamInterface<std::filesystem::path> {
protected:
    void SetUp() override {
        if (GetParam().empty()) {
            SKIP_OR_FAIL("the photos are missing");
        }
        RealExiftool::SetUp();
    }
};

TEST_P(RealPhoto, HasTheTagsThatTheToolPrintsByItself) {
    Tags tags = readTags(GetParam(), joined(kTagArguments));
    tags.erase("Warning");  // comes through standard error, which the library reads too
    EXPECT_EQ(tags, tagsPrintedFor(GetParam()));
}

// One photo's metadata in fresh files, as exports leave them, and what an independent run of the
// tool reads there.
struct Exports {
    explicit Exports(const std::filesystem::path& photo) {
        const ExportMetadataParameters parameters{300, 240, 2, "Editor 1.0", 3.0F};
        for (const std::filesystem::path& file : {jpeg, png, tiff}) {
            areAllCopied = copyMetadata(photo, file, parameters) && areAllCopied;
        }
        const Json all = readBack({photo, jpeg, png, tiff});
        source = all.at(0);
        copies = {{"JPEG", all.at(1)}, {"PNG", all.at(2)}, {"TIFF", all.at(3)}};
    }

    TemporaryDirectory folder{"real-copy-"};
    std::filesystem::path jpeg = folder.makeFile("export.jpg", test_support::freshJpeg());
    std::filesystem::path png = folder.makeFile("export.png", test_support::freshPng());
    std::filesystem::path tiff = folder.makeFile("export.tif", test_support::freshTiff());
    bool areAllCopied = true;
    Json source;
    std::vector<std::pair<std::string, Json>> copies;
};

class RealCopy : public RealPhoto {
protected:
    // Made once a photo, since each takes a while.
    static const Exports& exports() {
        static std::map<std::filesystem::path, std::unique_ptr<Exports>> made;
        std::unique_ptr<Exports>& exports = made[GetParam()];
        if (exports == nullptr) {
            exports = std::make_unique<Exports>(GetParam());
        }
        return *exports;
    }
};

TEST_P(RealCopy, IsConfirmedForJpegPngAndTiff) {
    EXPECT_TRUE(exports().areAllCopied);
}

// A value of the export. A PNG has it as XMP where the tool had XMP to write, else as Exif; where
// it has both they agree.
void expectExported(const Json& copy, const std::string& name, const Json& value) {
    const std::string exifName = "IFD0:" + name;
    const std::string xmpName = "XMP-tiff:" + name;
    EXPECT_TRUE(copy.contains(exifName) || copy.contains(xmpName)) << name;
    EXPECT_EQ(copy.value(exifName, value), value) << name;
    EXPECT_EQ(copy.value(xmpName, value), value) << name;
}

// Numbers are printed with more digits from XMP than from Exif, some of them as texts.
bool isSameValue(const Json& one, const Json& other) {
    const auto text = [](const Json& json) {
        return json.is_string() ? json.get<std::string>() : json.dump();
    };
    const std::string first = text(one);
    const std::string second = text(other);
    char* end = nullptr;
    const double number = std::strtod(first.c_str(), &end);
    if (end != first.c_str() + first.size()) {
        return first == second;
    }
    constexpr double kPrecision = 1e-8;
    return std::abs(number - std::strtod(second.c_str(), nullptr)) <= kPrecision * std::abs(number);
}

// What the source has under one name, the copy has under the other.
void expectCarried(const Json& source, const std::string& sourceName, const Json& copy,
                   const std::string& copyName) {
    if (source.contains(sourceName)) {
        EXPECT_TRUE(isSameValue(copy.value(copyName, Json()), source[sourceName]))
            << sourceName << ": " << source[sourceName] << ", " << copyName << ": "
            << copy.value(copyName, Json());
    }
}

TEST_P(RealCopy, SetsTheValuesOfTheExportAndDropsWhatDescribedTheSourcesPixels) {
    const Json& source = exports().source;
    for (const auto& [format, copy] : exports().copies) {
        SCOPED_TRACE(format);
        if (format != "PNG" || source.contains("IFD0:Orientation")) {
            expectExported(copy, "Orientation", 1);
        }
        expectExported(copy, "XResolution", 300);
        expectExported(copy, "YResolution", 240);
        expectExported(copy, "ResolutionUnit", 2);
        EXPECT_EQ(copy.value("IFD0:Software", Json()), "Editor 1.0");
        EXPECT_EQ(copy.value("XMP-xmp:CreatorTool", Json()), "Editor 1.0");
        EXPECT_EQ(copy.value("XMP-xmp:Rating", Json()), 3);
        EXPECT_FALSE(copy.contains("IFD1:ThumbnailImage"));
        EXPECT_FALSE(copy.contains("ExifIFD:ExifImageWidth"));
        EXPECT_FALSE(copy.contains("ExifIFD:ExifImageHeight"));
    }
}

TEST_P(RealCopy, CarriesCameraAndExposure) {
    const Json& source = exports().source;
    for (const auto& [format, copy] : exports().copies) {
        SCOPED_TRACE(format);
        const bool isPng = format == "PNG";
        for (const char* const name : {"Make", "Model"}) {
            expectCarried(source, std::string("IFD0:") + name, copy,
                          std::string(isPng ? "XMP-tiff:" : "IFD0:") + name);
        }
        for (const char* const name : {"ExposureTime", "FNumber", "FocalLength"}) {
            expectCarried(source, std::string("ExifIFD:") + name, copy,
                          std::string(isPng ? "XMP-exif:" : "ExifIFD:") + name);
        }
    }
    const Json& pngCopy = exports().copies.at(1).second;
    expectCarried(source, "ExifIFD:LensModel", pngCopy, "XMP-aux:Lens");
    expectCarried(source, "ExifIFD:SerialNumber", pngCopy, "XMP-aux:SerialNumber");
}

TEST_P(RealCopy, CarriesMakerNotesByTheSizeRule) {
    const test_support::ProgramResult sourceNotes =
        runRealTool({utf8(GetParam()), "-s3", "-makernotes"});
    std::string digits;
    for (const char c : sourceNotes.output) {
        digits += c >= '0' && c <= '9' ? std::string(1, c) : "";
    }
    const bool isWarnedOf = sourceNotes.error.find("arning") != std::string::npos;
    const bool isSmall = !isWarnedOf && (digits.empty() || std::stol(digits) <= 60000);

    // Maker notes elsewhere, as in a DNG's private data, stay where they are.
    const Json notes = readBack({GetParam(), exports().jpeg, exports().tiff}, {"-MakerNotes"});
    const auto has = [&notes](std::size_t i) {
        for (const auto& [name, value] : notes.at(i).items()) {
            if (name.starts_with("ExifIFD:")) {
                return true;
            }
        }
        return false;
    };
    EXPECT_EQ(has(1), has(0) && isSmall) << sourceNotes.output << sourceNotes.error;
    EXPECT_EQ(has(2), has(0)) << sourceNotes.output;
}

INSTANTIATE_TEST_SUITE_P(RealExiftool, RealPhoto, ::testing::ValuesIn(listFiles(PHOTOS)),
                         test_support::photoName);
INSTANTIATE_TEST_SUITE_P(RealExiftool, RealCopy, ::testing::ValuesIn(listFiles(PHOTOS)),
                         test_support::photoName);

}  // namespace
}  // namespace exiftool
