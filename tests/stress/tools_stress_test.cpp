#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "stress/quick_tools.h"
#include "support/this_process.h"

/// Runs of one tool, requests to the other and its end, all at once.
namespace exiv2_wp {
namespace {

using exiftool::internal::ExiftoolProcess;
using test_support::hasChildren;
using test_support::QuickTools;
using test_support::stressCalls;

// Whether a file that nobody has asked for is summarized as the tool prints it.
bool summarizesAFreshFile(const std::filesystem::path& folder) {
    static std::atomic<int> number = 0;
    const std::string name = "fresh-" + std::to_string(number++) + ".nef";
    std::string model;
    createImageMetadata(folder / name,
                        [&](const SExivMetadataInfo& info) { model = info.cameraModel; });
    return model == name;
}

enum class Answer { own, none, wrong };

// Asks the long-lived tool, which gives the request back: its last line is the file.
Answer askForTags(const std::filesystem::path& folder, int number) {
    const std::filesystem::path file = folder / ("asked-" + std::to_string(number) + ".jpg");
    const auto tags = exiftool::readTags(file, "-Lens");
    if (tags.empty()) {
        return Answer::none;
    }
    const auto line = tags.find("Line");
    return line != tags.end() && line->second == file.string() ? Answer::own : Answer::wrong;
}

Answer copy(const std::filesystem::path& folder) {
    return exiftool::copyMetadata(folder / "source.nef", folder / "export.tif",
                                  exiftool::ExportMetadataParameters{})
               ? Answer::own
               : Answer::none;
}

// Once the tool was asked to quit no request is answered, before that each is, and meanwhile
// either.
TEST(BothTools, ServeManyThreadsUntilOneEndsTheLongLivedOne) {
    constexpr int kThreads = 16;
    const QuickTools tools;
    ASSERT_TRUE(initialize(tools.path()));
    ASSERT_TRUE(exiftool::initialize(tools.path()));
    const int calls = stressCalls() / 5;
    std::atomic<int> next = 0;
    std::atomic<bool> isEnding = false;
    std::atomic<bool> hasEnded = false;
    std::atomic<int> wrong = 0;
    std::atomic<int> answered = 0;

    const auto ask = [&](int number) {
        const bool isLate = hasEnded;
        const Answer answer =
            number % 5 == 0 ? copy(tools.path()) : askForTags(tools.path(), number);
        const bool isEarly = !isEnding;
        answered += answer == Answer::own ? 1 : 0;
        return answer != Answer::wrong && !(isLate && answer == Answer::own) &&
               !(isEarly && answer == Answer::none);
    };
    const auto work = [&] {
        for (int number = next++; number < calls; number = next++) {
            if (number == calls / 2) {
                isEnding = true;
                exiftool::uninitialize();
                hasEnded = true;
            }
            const bool isRight = number % 2 == 0 ? ask(number) : summarizesAFreshFile(tools.path());
            wrong += isRight ? 0 : 1;
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back(work);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(answered, 0);
    EXPECT_FALSE(hasChildren());
}

// A tool that starts while others run must not share its pipes with them, or it would not see that
// its own has ended.
TEST(BothTools, StartAndEndBesideEachOther) {
    constexpr int kLives = 40;
    const QuickTools tools;
    ASSERT_TRUE(initialize(tools.path()));
    std::atomic<bool> isOver = false;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            while (!isOver) {
                wrong += summarizesAFreshFile(tools.path()) ? 0 : 1;
            }
        });
    }
    for (int life = 0; life < kLives; ++life) {
        ExiftoolProcess process(tools.path());
        wrong += process.execute({"a line"}).find("Line: a line\n") == std::string::npos ? 1 : 0;
        process.stop();
    }
    isOver = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_FALSE(hasChildren());
}

}  // namespace
}  // namespace exiv2_wp
