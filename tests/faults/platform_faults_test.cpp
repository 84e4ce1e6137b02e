#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "faults/fresh_file.h"
#include "faults/memory_platform.h"
#include "support/case_name.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

/// Every step that the exiv2 side asks of the platform fails once, at each place where it occurs.
namespace exiv2_wp {
namespace {

using test_support::caseName;
using test_support::freshFile;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::memoryPlatform;
using test_support::MemoryPlatform;

using Steps = std::vector<std::string>;

// The steps of one run whose output comes in one piece.
const Steps kRun = {"make pipe", "keep end from children", "start run", "read", "read", "wait"};

Steps twice(const Steps& steps) {
    Steps both = steps;
    both.insert(both.end(), steps.begin(), steps.end());
    return both;
}

/// What comes of a request when one step fails.
struct Fault {
    std::string name;
    int step;             ///< the one that fails, counted from 1
    std::string outcome;  ///< the request's result, as the test words it
    std::string message;  ///< of the one failure line; empty when nothing is logged
};

void PrintTo(const Fault& fault, std::ostream* stream) {
    *stream << "step " << fault.step;
}

// A request whose n-th step fails, and then one that meets no failure.
class FaultTest : public ::testing::TestWithParam<Fault> {
protected:
    void SetUp() override {
        MemoryPlatform& platform = memoryPlatform();
        platform.reset();
        platform.answer("--version", {});
        platform.answer("-PXEkycv", {.output = "Exif.Image.Make Ascii 5 Maker\n"});
        platform.answer("pr", {.output = "Lens name : EF 50mm\n"});
        platform.answer("-ep", {.output = "4 3 0 0 0 0\nJPEG"});
        platform.answer("--key", {.output = "Exif.Image.Make 4d 61\n"});
        internal::exiv2ExecutablePath = "exiv2.exe";
    }
    void TearDown() override {
        EXPECT_EQ(memoryPlatform().countOpen(), 0U);
        EXPECT_EQ(memoryPlatform().misuses(), std::vector<std::string>{});
        internal::exiv2ExecutablePath.clear();
    }

    // What a failure line says behind the signature, path included.
    std::vector<std::string> messages() const {
        std::vector<std::string> messages;
        for (const LogLine& line : log.linesOfType(3)) {
            std::string text = std::get<vesk::LogLiteral>(line.at(3)).text;
            text += line.size() > 4 ? std::get<std::string>(line.at(4)) : "";
            messages.push_back(text);
        }
        return messages;
    }

    // The lines that a fault is to leave in the log, about a file or directory.
    static std::vector<std::string> expectedMessages(const std::filesystem::path& about) {
        const std::string& message = GetParam().message;
        const std::string value = message.ends_with(' ') ? internal::narrowPath(about) : "";
        return message.empty() ? std::vector<std::string>{} : std::vector{message + value};
    }

    LogCapture log;
};

// ---- the metadata of a file

class MetadataFault : public FaultTest {
protected:
    std::string read() const {
        const auto record = internal::readExifMetadataFromCliCached(file);
        return record == nullptr
                   ? "none"
                   : std::to_string(record->tags.size()) + " tag, lens '" + record->lensName + "'";
    }

    const std::filesystem::path file = freshFile("photo.nef");
};

constexpr auto kWhole = "1 tag, lens 'EF 50mm'";
constexpr auto kWithoutSummary = "1 tag, lens ''";
constexpr auto kPrintAllFailed = "Exiv2 failed run -PXEkycv cli command for ";
constexpr auto kSummaryFailed = "Exiv2 failed run pr cli command for ";

TEST_F(MetadataFault, CanBeInTwelvePlaces) {
    EXPECT_EQ(read(), kWhole);
    EXPECT_EQ(memoryPlatform().steps(), twice(kRun));
}

TEST_P(MetadataFault, GivesWhatIsLeftAndIsRemembered) {
    memoryPlatform().failAt(GetParam().step);
    EXPECT_EQ(read(), GetParam().outcome);
    EXPECT_EQ(messages(), expectedMessages(file));

    memoryPlatform().failAt(0);
    EXPECT_EQ(read(), GetParam().outcome);
    EXPECT_EQ(memoryPlatform().steps(), Steps{});
}

TEST_P(MetadataFault, DoesNotTouchTheNextFile) {
    memoryPlatform().failAt(GetParam().step);
    (void)read();
    const auto next = internal::readExifMetadataFromCliCached(freshFile("photo.nef"));
    ASSERT_TRUE(next);
    EXPECT_EQ(next->lensName, "EF 50mm");
}

// A read that fails can't be told from the output's end: what counts then is the exit code.
INSTANTIATE_TEST_SUITE_P(
    , MetadataFault,
    ::testing::Values(Fault{"NoPipe", 1, "none", kPrintAllFailed},
                      Fault{"InheritablePipe", 2, "none", kPrintAllFailed},
                      Fault{"NoStart", 3, "none", kPrintAllFailed},
                      Fault{"NoOutput", 4, "0 tag, lens 'EF 50mm'", ""},
                      Fault{"NoEndOfOutput", 5, kWhole, ""},
                      Fault{"NoExitCode", 6, "none", kPrintAllFailed},
                      Fault{"NoPipeForTheSummary", 7, kWithoutSummary, kSummaryFailed},
                      Fault{"InheritablePipeForTheSummary", 8, kWithoutSummary, kSummaryFailed},
                      Fault{"NoStartForTheSummary", 9, kWithoutSummary, kSummaryFailed},
                      Fault{"NoSummaryOutput", 10, kWithoutSummary, ""},
                      Fault{"NoEndOfTheSummary", 11, kWhole, ""},
                      Fault{"NoExitCodeOfTheSummary", 12, kWithoutSummary, kSummaryFailed}),
    caseName<Fault>);

// ---- a preview

class PreviewFault : public FaultTest {
protected:
    std::string read(const std::filesystem::path& photo) const {
        TopBottomOffset offset{};
        std::string payload = "none";
        const auto note = [&payload](const unsigned char* bytes, std::uint64_t count,
                                     const TopBottomOffset&) {
            payload.assign(bytes, bytes + count);
            return true;
        };
        const auto ignoreSize = [](int, int, int) {};
        const bool result =
            readExiv2Thumbnail(photo, "", 4, 3, offset, ignoreSize, nullptr, note, nullptr);
        return result ? payload : "none";
    }

    const std::filesystem::path file = freshFile("photo.jpg");
};

constexpr auto kPreviewFailed = "Exiv2 failed run -ep cli command for ";

TEST_F(PreviewFault, CanBeInSixPlaces) {
    EXPECT_EQ(read(file), "JPEG");
    EXPECT_EQ(memoryPlatform().steps(), kRun);
}

TEST_P(PreviewFault, IsLoggedAndRemembered) {
    memoryPlatform().failAt(GetParam().step);
    EXPECT_EQ(read(file), GetParam().outcome);
    EXPECT_EQ(messages(), expectedMessages(file));

    memoryPlatform().failAt(0);
    EXPECT_EQ(read(file), GetParam().outcome);
    EXPECT_EQ(memoryPlatform().steps(), GetParam().outcome == "none" ? Steps{} : kRun);
    EXPECT_EQ(read(freshFile("photo.jpg")), "JPEG");
}

INSTANTIATE_TEST_SUITE_P(, PreviewFault,
                         ::testing::Values(Fault{"NoPipe", 1, "none", kPreviewFailed},
                                           Fault{"InheritablePipe", 2, "none", kPreviewFailed},
                                           Fault{"NoStart", 3, "none", kPreviewFailed},
                                           Fault{"NoOutput", 4, "none",
                                                 "Exiv2 failed to extract param for "},
                                           Fault{"NoEndOfOutput", 5, "JPEG", ""},
                                           Fault{"NoExitCode", 6, "none", kPreviewFailed}),
                         caseName<Fault>);

// ---- the bytes of one tag

class TagFault : public FaultTest {
protected:
    static std::string read(const ExivReader& reader) {
        std::int32_t size = 0;
        unsigned char* data = nullptr;
        if (!reader.getRawExifTag("Exif.Image.Make", &size, &data)) {
            return size == 0 && data == nullptr ? "none" : "none, but something was written";
        }
        const std::string bytes(data, data + size);
        ::operator delete(data);
        return bytes;
    }

    const std::filesystem::path file = freshFile("photo.nef");
};

constexpr auto kTagFailed = "Exiv2 failed run --key cli command for ";

TEST_F(TagFault, CanBeInSixPlaces) {
    const ExivReader reader(internal::narrowPath(file));
    memoryPlatform().failAt(0);
    EXPECT_EQ(read(reader), "Ma");
    EXPECT_EQ(memoryPlatform().steps(), kRun);
}

TEST_P(TagFault, IsLoggedAndForgotten) {
    const ExivReader reader(internal::narrowPath(file));
    memoryPlatform().failAt(GetParam().step);
    EXPECT_EQ(read(reader), GetParam().outcome);
    EXPECT_EQ(messages(), expectedMessages(file));

    memoryPlatform().failAt(0);
    EXPECT_EQ(read(reader), "Ma");
}

INSTANTIATE_TEST_SUITE_P(, TagFault,
                         ::testing::Values(Fault{"NoPipe", 1, "none", kTagFailed},
                                           Fault{"InheritablePipe", 2, "none", kTagFailed},
                                           Fault{"NoStart", 3, "none", kTagFailed},
                                           Fault{"NoOutput", 4, "none", "Exiv2 empty output."},
                                           Fault{"NoEndOfOutput", 5, "Ma", ""},
                                           Fault{"NoExitCode", 6, "none", kTagFailed}),
                         caseName<Fault>);

// ---- the start

class StartFault : public FaultTest {
protected:
    StartFault() { static_cast<void>(toolFolder.makeFile("exiv2.exe", "a tool")); }

    const test_support::TemporaryDirectory toolFolder;
    const std::filesystem::path folder = toolFolder.path();
};

// The tool that is asked for its version says nothing here, so there is one read.
TEST_F(StartFault, CanBeInFivePlaces) {
    EXPECT_TRUE(initialize(folder));
    EXPECT_EQ(memoryPlatform().steps(),
              (Steps{"make pipe", "keep end from children", "start run", "read", "wait"}));
}

TEST_P(StartFault, LeavesNoToolUntilTheNextStart) {
    const bool isHarmless = GetParam().outcome == "started";
    memoryPlatform().failAt(GetParam().step);
    EXPECT_EQ(initialize(folder), isHarmless);
    EXPECT_EQ(messages(), expectedMessages(folder / "exiv2.exe"));
    EXPECT_EQ(internal::exiv2ExecutablePath.empty(), !isHarmless);

    memoryPlatform().failAt(0);
    EXPECT_TRUE(initialize(folder));
    EXPECT_EQ(internal::exiv2ExecutablePath, folder / "exiv2.exe");
}

constexpr auto kStartFailed = "Exiv2 initialization failed: cannot execute ";

INSTANTIATE_TEST_SUITE_P(, StartFault,
                         ::testing::Values(Fault{"NoPipe", 1, "not started", kStartFailed},
                                           Fault{"InheritablePipe", 2, "not started", kStartFailed},
                                           Fault{"NoStart", 3, "not started", kStartFailed},
                                           Fault{"NoEndOfOutput", 4, "started", ""},
                                           Fault{"NoExitCode", 5, "not started", kStartFailed}),
                         caseName<Fault>);

}  // namespace
}  // namespace exiv2_wp
