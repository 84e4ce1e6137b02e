#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "exiv2_wrapper/exiftool/tag_reader.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "real_exiftool/fresh_images.h"
#include "real_exiftool/real_tool.h"
#include "support/photo_list.h"
#include "support/skip_or_fail.h"

namespace exiftool {
namespace {

using test_support::realToolFolder;
using test_support::runRealTool;
using test_support::sampleFiles;
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
    static const std::vector<std::filesystem::path> files = sampleFiles(PHOTOS);
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

// What the tool says of each photo's maker notes, in their order: all of their values as text, and
// whether it warns of the photo.
struct PrintedNotes {
    std::string values;
    bool isWarnedOf = false;
};

std::vector<PrintedNotes> printNotes(const std::vector<std::filesystem::path>& photos) {
    std::vector<std::string> arguments = {"-s3", "-makernotes"};
    for (const std::filesystem::path& photo : photos) {
        arguments.push_back(utf8(photo));
    }
    const test_support::ProgramResult printed = runRealTool(arguments);
    std::vector<PrintedNotes> notes;
    std::istringstream lines(printed.output);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("======== ")) {
            notes.emplace_back();
        } else if (!notes.empty()) {
            notes.back().values += line;
        }
    }
    std::istringstream warnings(printed.error);
    for (std::string line; std::getline(warnings, line);) {
        for (std::size_t i = 0; i < photos.size(); ++i) {
            const bool isAboutIt = line.ends_with("/" + utf8(photos[i].filename()));
            if (isAboutIt && line.find("arning") != std::string::npos) {
                notes.at(i).isWarnedOf = true;
            }
        }
    }
    return notes;
}

// A photo's metadata in fresh files, as exports leave them, and what independent runs of the tool
// read there.
struct Export {
    explicit Export(std::filesystem::path file) : photo(std::move(file)) {
        const ExportMetadataParameters parameters{300, 240, 2, "Editor 1.0", 3.0F};
        for (const std::filesystem::path& copy : {jpeg, png, tiff}) {
            areAllCopied = copyMetadata(photo, copy, parameters) && areAllCopied;
        }
    }

    std::filesystem::path photo;
    TemporaryDirectory folder{"real-copy-"};
    std::filesystem::path jpeg = folder.makeFile("export.jpg", test_support::freshJpeg());
    std::filesystem::path png = folder.makeFile("export.png", test_support::freshPng());
    std::filesystem::path tiff = folder.makeFile("export.tif", test_support::freshTiff());
    bool areAllCopied = true;
    Json source;
    std::vector<std::pair<std::string, Json>> copies;
    PrintedNotes printedNotes;  // the source's
    Json sourceNotes;
    Json jpegNotes;
    Json tiffNotes;
};

// Of all photos at once, since a start of the tool takes longer than a photo.
std::vector<std::unique_ptr<Export>> makeExports() {
    std::vector<std::unique_ptr<Export>> exports;
    const std::vector<std::filesystem::path> photos = sampleFiles(PHOTOS);
    std::vector<std::filesystem::path> files;
    for (const std::filesystem::path& photo : photos) {
        exports.push_back(std::make_unique<Export>(photo));
        const Export& made = *exports.back();
        files.insert(files.end(), {made.photo, made.jpeg, made.png, made.tiff});
    }
    const Json tags = readBack(files);
    const Json notes = readBack(files, {"-MakerNotes"});
    const std::vector<PrintedNotes> printed = printNotes(photos);
    for (std::size_t i = 0; i < exports.size(); ++i) {
        Export& made = *exports[i];
        const std::size_t first = 4 * i;
        made.source = tags.at(first);
        made.copies = {{"JPEG", tags.at(first + 1)},
                       {"PNG", tags.at(first + 2)},
                       {"TIFF", tags.at(first + 3)}};
        made.printedNotes = printed.at(i);
        made.sourceNotes = notes.at(first);
        made.jpegNotes = notes.at(first + 1);
        made.tiffNotes = notes.at(first + 3);
    }
    return exports;
}

class RealCopy : public RealPhoto {
protected:
    static const Export& exported() {
        static const std::vector<std::unique_ptr<Export>> exports = makeExports();
        return **std::find_if(exports.begin(), exports.end(),
                              [](const auto& made) { return made->photo == GetParam(); });
    }
};

TEST_P(RealCopy, IsConfirmedForJpegPngAndTiff) {
    EXPECT_TRUE(exported().areAllCopied);
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
    const Json& source = exported().source;
    for (const auto& [format, copy] : exported().copies) {
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
    const Json& source = exported().source;
    for (const auto& [format, copy] : exported().copies) {
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
    const Json& pngCopy = exported().copies.at(1).second;
    expectCarried(source, "ExifIFD:LensModel", pngCopy, "XMP-aux:Lens");
    expectCarried(source, "ExifIFD:SerialNumber", pngCopy, "XMP-aux:SerialNumber");
}

TEST_P(RealCopy, CarriesMakerNotesByTheSizeRule) {
    const Export& made = exported();
    const PrintedNotes& printed = made.printedNotes;
    std::string digits;
    for (const char c : printed.values) {
        digits += c >= '0' && c <= '9' ? std::string(1, c) : "";
    }
    const bool isSmall = !printed.isWarnedOf && (digits.empty() || std::stol(digits) <= 60000);

    // Maker notes elsewhere, as in a DNG's private data, stay where they are.
    const auto hasAny = [](const Json& notes) {
        for (const auto& [name, value] : notes.items()) {
            if (name.starts_with("ExifIFD:")) {
                return true;
            }
        }
        return false;
    };
    EXPECT_EQ(hasAny(made.jpegNotes), hasAny(made.sourceNotes) && isSmall) << printed.values;
    EXPECT_EQ(hasAny(made.tiffNotes), hasAny(made.sourceNotes));
}

INSTANTIATE_TEST_SUITE_P(RealExiftool, RealPhoto, ::testing::ValuesIn(sampleFiles(PHOTOS)),
                         test_support::photoName);
INSTANTIATE_TEST_SUITE_P(RealExiftool, RealCopy, ::testing::ValuesIn(sampleFiles(PHOTOS)),
                         test_support::photoName);

}  // namespace
}  // namespace exiftool
