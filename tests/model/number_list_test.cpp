#include "exiv2_wrapper/model/number_list.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "support/latch.h"

namespace exiv2_wp::internal {
namespace {

TEST(NumberList, IsWhatItsTextHoldsWhateverBecomesOfOtherLists) {
    const std::string_view text = "1 -2 x 3";
    const IntegerList expected{1, -2, 3};
    IntegerList unread(text);
    const IntegerList copyOfUnread = unread;
    EXPECT_EQ(unread, expected);
    const IntegerList copyOfRead = unread;
    IntegerList assigned{4};
    assigned = unread;
    unread = IntegerList(std::string_view("5"));

    EXPECT_EQ(copyOfUnread, expected);
    EXPECT_EQ(copyOfRead, expected);
    EXPECT_EQ(assigned, expected);
    EXPECT_EQ(unread, IntegerList{5});
}

TEST(NumberList, MayBeGivenAndCopied) {
    const RationalList given{{1, 2}, {3, 0}};
    const RationalList copy = given;
    EXPECT_EQ(copy.size(), 2U);
    EXPECT_EQ(copy[1], Rational(3, 0));
    EXPECT_TRUE(RationalList().empty());
}

// Those who read at the same time may do it twice; all of them get one list, which stays.
TEST(NumberList, IsTheSameForAllThreadsThatAskAtOnce) {
    constexpr std::size_t kThreads = 16;
    constexpr int kRounds = 20;
    constexpr std::size_t kNumbers = 2000;
    std::string text;
    for (std::size_t i = 0; i < kNumbers; ++i) {
        text += std::to_string(i) + ' ';
    }
    for (int round = 0; round < kRounds; ++round) {
        const IntegerList list(text);
        std::vector<const std::int64_t*> firsts(kThreads);
        std::vector<std::int64_t> lasts(kThreads);
        test_support::Latch start(kThreads);
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, i] {
                start.arrive_and_wait();
                firsts[i] = &list.front();
                lasts[i] = list[kNumbers - 1];
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(firsts, std::vector<const std::int64_t*>(kThreads, &list.front()));
        EXPECT_EQ(lasts, std::vector<std::int64_t>(kThreads, kNumbers - 1));
    }
}

}  // namespace
}  // namespace exiv2_wp::internal
