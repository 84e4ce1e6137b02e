#include "photoinfo/folder/interrupt.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>

#include "photoinfo/folder/parallel.h"

namespace photoinfo {
namespace {

TEST(WorkInParallel, BeginsNothingMoreOnceCtrlCIsPressed) {
    std::size_t calls = 0;
    Interrupt interrupt;
    const auto work = [&](std::size_t index) {
        ++calls;
        if (index == 2) {
            ::kill(::getpid(), SIGINT);
        }
    };

    workInParallel(1000, 1, interrupt, work);

    EXPECT_EQ(calls, 3U);
    EXPECT_TRUE(interrupt.isRequested());
}

TEST(Interrupt, LeavesCtrlCAsItWas) {
    { const Interrupt interrupt; }

    EXPECT_EXIT(::kill(::getpid(), SIGINT), ::testing::KilledBySignal(SIGINT), "");
}

}  // namespace
}  // namespace photoinfo
