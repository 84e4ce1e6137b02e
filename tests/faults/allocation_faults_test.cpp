#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "exiftool/scripted_channel.h"
#include "exiv2_wrapper/exiftool/request_protocol.h"
#include "exiv2_wrapper/model/number_list.h"
#include "faults/failing_allocations.h"
#include "faults/photo_on_memory_platform.h"
#include "support/case_name.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

/// Memory runs out at every allocation that a call makes, one after the other.
namespace exiv2_wp {
namespace {

using test_support::failEachAllocation;
using test_support::freshFile;
using test_support::LogCapture;
using test_support::memoryPlatform;
using test_support::runsOutOfMemory;
using test_support::utf8;

/// A call of the library, whose result is a text that it makes without allocations of its own that
/// could fail.
struct Call {
    std::string name;
    std::function<void(const std::filesystem::path& file, std::string& result)> make;
};

void PrintTo(const Call& call, std::ostream* stream) {
    *stream << call.name;
}

// Writes a result down, which is the test's business and never fails.
void note(std::string& result, const std::string& text) {
    const test_support::SafeAllocations safe;
    result += text + ";";
}

void note(std::string& result, std::int64_t number) {
    const test_support::SafeAllocations safe;
    result += std::to_string(number) + ";";
}

void readThumbnail(const std::filesystem::path& file, std::string& result) {
    TopBottomOffset offset{};
    const bool isTaken = readExiv2Thumbnail(
        file, "", 4, 3, offset,
        [&result](int width, int height, int) { note(result, width * 100 + height); }, nullptr,
        [&result](const unsigned char*, std::uint64_t count, const TopBottomOffset&) {
            note(result, static_cast<std::int64_t>(count));
            return true;
        },
        nullptr);
    note(result, isTaken ? "taken" : "not taken");
}

void readBatch(const std::filesystem::path& file, std::string& result) {
    const exivBatchValue batch = readExiv2Win(file);
    note(result, *batch.orientation);
    note(result, *batch.dateTimeOriginal);
}

void readNames(const std::filesystem::path&, std::string& result) {
    std::string camera = "Canon EOS-5D Mark/IV of a long name";
    CamerasProfiles_canonizeName(camera);
    ImageLens_canonizeName(camera);
    note(result, camera);
    note(result, static_cast<std::int64_t>(getCropFactor("Canon ", "PowerShot S100") * 100));
}

const std::vector<Call> kCalls = {
    {"createImageMetadata",
     [](const auto& file, std::string& result) {
         createImageMetadata(file, [&result](const SExivMetadataInfo& info) {
             note(result, info.cameraMaker + info.dateTimeIso + info.lensModel);
         });
     }},
    {"readExiv2Orientation",
     [](const auto& file, std::string& result) {
         readExiv2Orientation(file, [&result](int orientation) { note(result, orientation); });
     }},
    {"isTiffRaw",
     [](const auto& file, std::string& result) { note(result, isTiffRaw(file) ? "yes" : "no"); }},
    {"readExiv2Info",
     [](const auto& file, std::string& result) {
         readExiv2Info(
             file, "Canon", "EOS 5D",
             [&result](const SLensInfo& lens) { note(result, lens.lensName); },
             [&result](const SMetadataExiv& metadata) { note(result, metadata.bitsPerSample); },
             [] {});
     }},
    {"readExiv2Win", readBatch},
    {"readExiv2Thumbnail", readThumbnail},
    {"names", readNames},
};

class ExhaustedMemory : public test_support::PhotoOnMemoryPlatform,
                        public ::testing::WithParamInterface<Call> {
protected:
    std::string resultOf(const std::filesystem::path& file) const {
        std::string result;
        GetParam().make(file, result);
        return result;
    }

    const LogCapture log;
};

class ReadersOfAKnownFile : public test_support::PhotoOnMemoryPlatform {
protected:
    const LogCapture log;
};

// What does not matter to the result may fail unnoticed.
TEST_P(ExhaustedMemory, ReachesTheCallerOrDoesNotMatterAndTheNextCallWorks) {
    const std::string expected = resultOf(freshFile("photo.nef"));
    std::filesystem::path file;
    std::string result;
    bool hasRaised = false;
    const int failures = failEachAllocation(
        [&] {
            file = freshFile("photo.nef");
            result.clear();
        },
        [&] { hasRaised = runsOutOfMemory([&] { GetParam().make(file, result); }); },
        [&] {
            EXPECT_TRUE(hasRaised || result == expected);
            EXPECT_EQ(resultOf(file), expected);
            expectNothingLeft();
        });
    EXPECT_EQ(result, expected);  // of the call for which memory sufficed
    EXPECT_GT(failures, 0);
}

INSTANTIATE_TEST_SUITE_P(In, ExhaustedMemory, ::testing::ValuesIn(kCalls),
                         test_support::caseName<Call>);

// A file that is known already: nothing fails unnoticed.
TEST_F(ReadersOfAKnownFile, GetItsOrientationOrTheException) {
    std::filesystem::path file;
    int orientation = 0;
    bool hasRaised = false;
    const auto read = [&] { readExiv2Orientation(file, [&](int value) { orientation = value; }); };
    const auto prepare = [&] {
        file = freshFile("photo.nef");
        read();
        orientation = 0;
        memoryPlatform().failAt(0);
    };
    const auto check = [&] {
        EXPECT_EQ(hasRaised, orientation == 0);
        read();
        EXPECT_EQ(orientation, 6);
        EXPECT_EQ(memoryPlatform().steps(), std::vector<std::string>{});
    };
    const auto act = [&] { hasRaised = runsOutOfMemory(read); };
    EXPECT_GT(failEachAllocation(prepare, act, check), 0);
}

// ---- the reader of single tags

class ReaderWithoutMemory : public test_support::PhotoOnMemoryPlatform {
protected:
    LogCapture log;
};

// The constructor swallows what the reading raises, so that only its own state can be missing.
TEST_F(ReaderWithoutMemory, IsMadeEmptyOrNotAtAll) {
    std::filesystem::path file;
    std::string name;
    bool hasRaised = false;
    bool isEmpty = false;
    const int failures = failEachAllocation(
        [&] {
            file = freshFile("photo.nef");
            name = utf8(file);
            log.clear();
        },
        [&] {
            hasRaised = runsOutOfMemory([&] {
                const ExivReader reader(name);
                const test_support::SafeAllocations safe;
                std::string make;
                isEmpty = !reader.getRawExifTag("Exif.Image.Make", make);
            });
        },
        [&] {
            EXPECT_EQ(log.linesOfType(3).size(), !hasRaised && isEmpty ? 1U : 0U);
            std::string make;
            EXPECT_TRUE(ExivReader(name).getRawExifTag("Exif.Image.Make", make));
            expectNothingLeft();
        });
    EXPECT_FALSE(isEmpty);
    EXPECT_GT(failures, 0);
}

TEST_F(ReaderWithoutMemory, LetsTheCallerKnowAndAnswersTheNextQuestion) {
    const ExivReader reader(utf8(freshFile("photo.nef")));
    const auto answersAll = [&reader] {
        std::int32_t size = 0;
        unsigned char* data = nullptr;
        const bool hasBytes = reader.getRawExifTag("Exif.Image.Make", &size, &data);
        ::operator delete(data);
        std::uint32_t number = 0;
        const bool hasNumber = reader.getInterpretedRawExifTag("Exif.Image.Make", 0, &number);
        return hasBytes && size == 2 && hasNumber && number == 4 && reader.getXMPData().size() == 2;
    };
    bool hasRaised = false;
    bool isAnswered = false;
    const int failures = failEachAllocation(
        [] {}, [&] { hasRaised = runsOutOfMemory([&] { isAnswered = answersAll(); }); },
        [&] {
            EXPECT_TRUE(hasRaised);
            EXPECT_TRUE(answersAll());
            expectNothingLeft();
        });
    EXPECT_TRUE(isAnswered);
    EXPECT_GT(failures, 0);
}

// A tag's numbers are read by the question for them, and may keep more room than they need.
TEST(NumbersWithoutMemory, AreReadByTheNextQuestion) {
    std::optional<internal::IntegerList> numbers;
    bool hasRaised = false;
    std::size_t count = 0;
    const auto ask = [&] { count = numbers->size(); };
    const int failures = failEachAllocation(
        [&] {
            numbers.emplace(std::string_view("1 2 3 4 5"));
            count = 0;
        },
        [&] { hasRaised = runsOutOfMemory(ask); },
        [&] {
            EXPECT_EQ(hasRaised, count == 0);
            EXPECT_EQ(numbers->size(), 5U);
        });
    EXPECT_EQ(count, 5U);
    EXPECT_GT(failures, 0);
}

// ---- the long-lived tool

// Fails each allocation that reading the first of two answers takes, and expects the second then.
void expectTheNextAnswerBehind(const std::string& first) {
    using exiftool::internal::readAnswer;
    const std::string second = "next{ready}";
    std::optional<exiftool::internal::ScriptedChannel> channel;
    bool hasRaised = false;
    const int failures = failEachAllocation(
        [&] {
            channel.emplace(std::vector{first, second});
        },
        [&] { hasRaised = runsOutOfMemory([&] { (void)readAnswer(*channel); }); },
        [&] {
            EXPECT_TRUE(hasRaised);
            EXPECT_EQ(readAnswer(*channel), second) << first;
        });
    EXPECT_GT(failures, 0);
}

TEST(AnswerWithoutMemory, IsSkippedUpToItsMarkerWhereverThatLies) {
    for (std::size_t position = 500; position < 520; ++position) {
        expectTheNextAnswerBehind(std::string(position, 'x') + "{ready}");
    }
}

TEST(AnswerWithoutMemory, IsNotEndedByPartsOfTheMarker) {
    const std::string most(2500, 'x');
    expectTheNextAnswerBehind(most + "already} {read} {re ady}{ready}");
    expectTheNextAnswerBehind(most + "{{ready}");
    expectTheNextAnswerBehind(most + "{re{ready}");
}

class ExiftoolWithoutMemory : public ::testing::Test {
protected:
    // Longer than what several reads bring, so that memory can run out in the middle of an answer.
    // The number in it is the size of maker notes, the last line is what confirms a copy.
    static std::string answer() {
        std::string text;
        for (char name = 'A'; name <= 'Z'; ++name) {
            text += name + std::string(99, name) + ": a value that is of no interest\n";
        }
        return text + "LensID: A lens with a rather long name\n1 image files updated\n{ready}\n";
    }

    static void SetUpTestSuite() {
        test_support::memoryPlatform().reset();
        memoryPlatform().answerRequests(answer());
        ASSERT_TRUE(exiftool::initialize("folder"));
    }

    const std::filesystem::path source = freshFile("source.nef");
    const std::filesystem::path destination = freshFile("export.jpg");
    LogCapture log;
};

TEST_F(ExiftoolWithoutMemory, ReadsTheNextAnswerFromItsBeginning) {
    const std::string expected = "A lens with a rather long name";
    bool hasRaised = false;
    std::string name;
    const int failures = failEachAllocation(
        [] {},
        [&] { hasRaised = runsOutOfMemory([&] { name = exiftool::getLensPrettyName(source); }); },
        [&] {
            EXPECT_TRUE(hasRaised);
            EXPECT_EQ(exiftool::getLensPrettyName(source), expected);
        });
    EXPECT_EQ(name, expected);
    EXPECT_GT(failures, 0);
}

// Where memory runs out while the maker notes are measured, they aren't copied, and all else is.
TEST_F(ExiftoolWithoutMemory, CopiesWithoutMakerNotesOrNotAtAll) {
    exiftool::ExportMetadataParameters parameters;
    parameters.software = "An editor with a rather long name";
    bool hasRaised = false;
    bool isCopied = false;
    const int failures = failEachAllocation(
        [&] { log.clear(); },
        [&] {
            hasRaised = runsOutOfMemory(
                [&] { isCopied = exiftool::copyMetadata(source, destination, parameters); });
        },
        [&] {
            const bool isMeasured = log.linesOfType(2).empty();
            EXPECT_EQ(hasRaised, isMeasured);
            EXPECT_TRUE(hasRaised || isCopied);
            EXPECT_TRUE(exiftool::copyMetadata(source, destination, parameters));
        });
    EXPECT_TRUE(isCopied);
    EXPECT_GT(failures, 0);
}

}  // namespace
}  // namespace exiv2_wp
