#include "photoinfo/folder/parallel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "photoinfo/folder/interrupt.h"
#include "photoinfo/platform.h"
#include "support/latch.h"

// No terminal: the progress bar stays away.
namespace photoinfo::platform {

std::size_t errorTerminalColumns() {
    return 0;
}

void writeError(std::string_view) {}

}  // namespace photoinfo::platform

namespace photoinfo {
namespace {

TEST(WorkInParallel, CallsOnceForEachIndex) {
    std::vector<std::atomic<int>> calls(1000);
    Interrupt interrupt;

    workInParallel(calls.size(), 8, interrupt, [&](std::size_t index) { ++calls[index]; });

    EXPECT_TRUE(std::all_of(calls.begin(), calls.end(), [](int count) { return count == 1; }));
}

TEST(WorkInParallel, BeginsWithTheLowestIndex) {
    std::vector<std::size_t> indices;
    Interrupt interrupt;

    workInParallel(4, 1, interrupt, [&](std::size_t index) { indices.push_back(index); });

    EXPECT_EQ(indices, (std::vector<std::size_t>{0, 1, 2, 3}));
}

// Ends only when all four are under way at once.
TEST(WorkInParallel, RunsAsManyJobsAtOnceAsItIsTold) {
    test_support::Latch latch(4);
    Interrupt interrupt;

    workInParallel(4, 4, interrupt, [&](std::size_t) { latch.arrive_and_wait(); });
}

TEST(WorkInParallel, HasNothingToDoForNothing) {
    Interrupt interrupt;

    workInParallel(0, 4, interrupt, [](std::size_t) { FAIL(); });
}

TEST(WorkInParallel, StopsAtAnExceptionAndRaisesIt) {
    std::size_t calls = 0;
    Interrupt interrupt;
    const auto work = [&](std::size_t index) {
        ++calls;
        if (index == 3) {
            throw std::runtime_error("a photo that is none");
        }
    };

    EXPECT_THROW(workInParallel(1000, 1, interrupt, work), std::runtime_error);

    EXPECT_EQ(calls, 4U);
}

TEST(WorkInParallel, WaitsForWhatIsUnderWayWhenAnotherJobFails) {
    test_support::Latch hasFailed(1);
    std::atomic<bool> hasEnded = false;
    Interrupt interrupt;
    const auto work = [&](std::size_t index) {
        if (index == 0) {
            hasFailed.wait();
            hasEnded = true;
        } else {
            hasFailed.count_down();
            throw std::runtime_error("a photo that is none");
        }
    };

    EXPECT_THROW(workInParallel(2, 2, interrupt, work), std::runtime_error);

    EXPECT_TRUE(hasEnded);
}

// ---- portions

using Portions = std::vector<std::pair<std::size_t, std::size_t>>;

TEST(PreparedWork, IsPreparedAPortionAtATime) {
    Portions portions;
    std::size_t worked = 0;
    Interrupt interrupt;

    workInParallel(
        7, 1, interrupt,
        [&](std::size_t index) {
            EXPECT_EQ(index, worked++);
            EXPECT_LT(index, portions.back().second);
        },
        {3, [&](std::size_t begin, std::size_t end) { portions.emplace_back(begin, end); }});

    EXPECT_EQ(portions, (Portions{{0, 3}, {3, 6}, {6, 7}}));
    EXPECT_EQ(worked, 7U);
}

TEST(PreparedWork, StopsAtAnExceptionInTheMiddleOfAPortion) {
    std::size_t calls = 0;
    Interrupt interrupt;
    const auto work = [&](std::size_t index) {
        ++calls;
        if (index == 1) {
            throw std::runtime_error("a photo that is none");
        }
    };

    EXPECT_THROW(workInParallel(1000, 1, interrupt, work, {10}), std::runtime_error);

    EXPECT_EQ(calls, 2U);
}

TEST(PreparedWork, IsNotBegunWhenThePreparationFails) {
    Interrupt interrupt;
    const auto fail = [](std::size_t, std::size_t) { throw std::runtime_error("no memory"); };

    EXPECT_THROW(workInParallel(10, 2, interrupt, [](std::size_t) { FAIL(); }, {5, fail}),
                 std::runtime_error);
}

}  // namespace
}  // namespace photoinfo
