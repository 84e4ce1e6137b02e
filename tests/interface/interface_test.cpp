#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "interface/exported_header_alone.h"
#include "interface/loaded_library.h"
#include "support/current_directory.h"
#include "support/tool_directory.h"
#include "vesk_logger/log_sink.h"

/// The library as a host has it: linked as a shared library, seen through the exported header.
namespace {

using test_support::Arguments;
using test_support::CurrentDirectory;
using test_support::LoadedLibrary;
using test_support::native;
using test_support::ToolDirectory;

constexpr auto kPrintAll =
    "Exif.Image.Make Ascii 6 Maker\n"
    "Exif.Image.Model Ascii 6 Model\n"
    "Exif.Photo.ISOSpeedRatings Short 1 400\n"
    "Exif.Photo.FNumber Rational 1 28/10\n"
    "Exif.Photo.FocalLength Rational 1 50/1\n"
    "Exif.Photo.LensModel Ascii 16 EF50mm f/1.8 STM\n";

// Keeps the log quiet, but remembers the last item of its last line.
class QuietLog {
public:
    QuietLog() {
        vesk::setLogSink([this](const std::vector<vesk::LogItem>& line) { last_ = line.back(); });
    }
    QuietLog(const QuietLog&) = delete;
    QuietLog& operator=(const QuietLog&) = delete;
    ~QuietLog() { vesk::setLogSink({}); }

    std::string lastText() const {
        const auto* const text = std::get_if<std::string>(&last_);
        return text == nullptr ? "" : *text;
    }

private:
    vesk::LogItem last_;
};

class Interface : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(exiv2_wp::initialize(tool.path())); }

    QuietLog log;
    ToolDirectory tool;
};

TEST_F(Interface, SummarisesAPhoto) {
    tool.answerMetadata(kPrintAll);
    std::optional<exiv2_wp::SExivMetadataInfo> summary;
    exiv2_wp::createImageMetadata(
        tool.makeFile("photo.jpg"),
        [&summary](const exiv2_wp::SExivMetadataInfo& info) { summary = info; });
    ASSERT_TRUE(summary);
    EXPECT_EQ(summary->cameraMaker, "Maker");
    EXPECT_EQ(summary->cameraModel, "Model");
    EXPECT_EQ(summary->lensModel, "EF50mm f/1.8 STM");
    EXPECT_EQ(summary->iso, 400.0F);
    EXPECT_EQ(summary->fNumber, 2.8F);
    EXPECT_EQ(summary->focalLength, 50.0F);
    EXPECT_EQ(summary->exposureBias, -999.0F);
}

TEST_F(Interface, CallsBackOnceOnTheCallersThread) {
    tool.answerMetadata(kPrintAll);
    static thread_local int calls = 0;
    calls = 0;
    exiv2_wp::createImageMetadata(tool.makeFile("photo.jpg"),
                                  [](const exiv2_wp::SExivMetadataInfo&) { ++calls; });
    EXPECT_EQ(calls, 1);
}

TEST_F(Interface, DoesNotCallBackForAFileWithoutMetadata) {
    tool.answer({"-PXEkycv"}, {.exitCode = 1});
    exiv2_wp::createImageMetadata(tool.makeFile("photo.jpg"),
                                  [](const exiv2_wp::SExivMetadataInfo&) { FAIL(); });
}

TEST_F(Interface, RaisesBadFunctionCallForAnEmptyCallback) {
    tool.answerMetadata(kPrintAll);
    EXPECT_THROW(exiv2_wp::createImageMetadata(tool.makeFile("photo.jpg"), {}),
                 std::bad_function_call);
}

TEST_F(Interface, NeedsNoCallbackForAFileWithoutMetadata) {
    tool.answer({"-PXEkycv"}, {.exitCode = 1});
    EXPECT_NO_THROW(exiv2_wp::createImageMetadata(tool.makeFile("photo.jpg"), {}));
}

TEST_F(Interface, RaisesOutOfRangeForASummaryLineThatEndsInItsColon) {
    tool.answerMetadata(kPrintAll, "Lens name:");
    EXPECT_THROW(exiv2_wp::createImageMetadata(tool.makeFile("photo.jpg"),
                                               [](const exiv2_wp::SExivMetadataInfo&) { FAIL(); }),
                 std::out_of_range);
}

TEST_F(Interface, LetsACallbacksOwnExceptionPass) {
    tool.answerMetadata(kPrintAll);
    struct HostError {};
    EXPECT_THROW(exiv2_wp::createImageMetadata(
                     tool.makeFile("photo.jpg"),
                     [](const exiv2_wp::SExivMetadataInfo&) { throw HostError(); }),
                 HostError);
}

TEST(ExportedHeader, CompilesAloneAsCpp17) {
    EXPECT_EQ(languageOfTheExportedHeader(), 201703L);
}

// A copy of the library in another folder than the program's.
class LibraryElsewhere : public ::testing::Test {
protected:
    using Initialize = bool(const std::filesystem::path&);

    static std::filesystem::path copyInto(const std::filesystem::path& folder) {
        const std::filesystem::path copy = folder / "copy_of_the_library.dll";
        std::filesystem::copy_file(EXIV2_WRAPPER_LIBRARY, copy);
        return copy;
    }

    QuietLog log;
};

TEST_F(LibraryElsewhere, FindsTheToolBesideItself) {
    const ToolDirectory tool;
    const LoadedLibrary library(copyInto(tool.path()));
    auto* const initialize = library.find<Initialize>(INITIALIZE_SYMBOL);
    ASSERT_NE(initialize, nullptr);
    EXPECT_TRUE(initialize({}));
    EXPECT_EQ(tool.calls(), std::vector<Arguments>{{native("--version")}});
}

// By a name that means something else, or nothing, in the host's next folder.
TEST_F(LibraryElsewhere, FindsTheToolBesideItselfWhenItWasLoadedByARelativePath) {
    const ToolDirectory tool;
    const std::filesystem::path copy = copyInto(tool.path());
    auto isThere = std::make_unique<CurrentDirectory>(tool.path());
    const LoadedLibrary library("." / copy.filename());
    isThere.reset();
    auto* const initialize = library.find<Initialize>(INITIALIZE_SYMBOL);
    ASSERT_NE(initialize, nullptr);
    EXPECT_TRUE(initialize({}));
}

TEST_F(LibraryElsewhere, AsksExiftoolToQuitWhenItIsUnloaded) {
    const ToolDirectory tool("exiftool.exe");
    const test_support::TemporaryDirectory folder;
    {
        const LoadedLibrary library(copyInto(folder.path()));
        auto* const initialize = library.find<Initialize>(INITIALIZE_EXIFTOOL_SYMBOL);
        ASSERT_NE(initialize, nullptr);
        EXPECT_TRUE(initialize(tool.path()));
        ASSERT_TRUE(tool.waitForCalls(1));
        EXPECT_EQ(tool.countQuits(), 0U);
    }
    EXPECT_TRUE(tool.waitForEvents("quit", 1));
    EXPECT_EQ(tool.countQuits(), 1U);
}

TEST_F(LibraryElsewhere, LooksForTheToolNowhereElse) {
    const test_support::TemporaryDirectory folder;
    const LoadedLibrary library(copyInto(folder.path()));
    auto* const initialize = library.find<Initialize>(INITIALIZE_SYMBOL);
    ASSERT_NE(initialize, nullptr);
    EXPECT_FALSE(initialize({}));
    EXPECT_EQ(log.lastText(), (folder.path() / "exiv2.exe").string());
}

}  // namespace
