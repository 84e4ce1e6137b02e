#include "photoinfo/folder/interrupt.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>

#include "photoinfo/folder/parallel.h"

namespace photoinfo {
namespace {

// A shell that starts programs in the background lets them ignore Ctrl-C.
class OnCtrlC : public ::testing::Test {
public:
    OnCtrlC() : before_(std::signal(SIGINT, SIG_DFL)) {}
    ~OnCtrlC() override { std::signal(SIGINT, before_); }

private:
    void (*before_)(int);
};

TEST_F(OnCtrlC, WorkInParallelBeginsNothingMore) {
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

TEST_F(OnCtrlC, DoesItsUsualWorkBehindAnInterrupt) {
    { const Interrupt interrupt; }

    EXPECT_EXIT(::kill(::getpid(), SIGINT), ::testing::KilledBySignal(SIGINT), "");
}

}  // namespace
}  // namespace photoinfo
