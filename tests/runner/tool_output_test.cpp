#include "exiv2_wrapper/runner/tool_output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <new>
#include <random>
#include <string>

#include "support/sanitized.h"

namespace exiv2_wp::internal {
namespace {

void append(ToolOutput& output, std::string_view bytes) {
    const std::span<char> room = output.room(bytes.size());
    std::copy(bytes.begin(), bytes.end(), room.begin());
    output.keep(bytes.size());
}

TEST(ToolOutput, BeginsEmpty) {
    EXPECT_EQ(ToolOutput().text(), "");
}

TEST(ToolOutput, KeepsWhatWasWrittenIntoItsRoom) {
    ToolOutput output;
    append(output, "some ");
    append(output, "text");
    EXPECT_EQ(output.text(), "some text");
}

TEST(ToolOutput, LeavesOutTheRoomThatIsNotKept) {
    ToolOutput output;
    append(output, "text");
    const std::span<char> room = output.room(100);
    std::fill(room.begin(), room.end(), 'x');
    output.keep(1);
    EXPECT_EQ(output.text(), "textx");
}

TEST(ToolOutput, LosesWhatIsTakenOffItsFront) {
    ToolOutput output;
    append(output, "some text");
    output.dropFront(5);
    EXPECT_EQ(output.text(), "text");
    append(output, " more");
    output.dropFront(0);
    EXPECT_EQ(output.text(), "text more");
    output.dropFront(9);
    EXPECT_EQ(output.text(), "");
}

TEST(ToolOutput, IsEmptyAgainWhenItIsCleared) {
    ToolOutput output;
    append(output, "before");
    output.clear();
    append(output, "after");
    EXPECT_EQ(output.text(), "after");
}

TEST(ToolOutput, HoldsWhatAStringHoldsAfterRandomSteps) {
    std::mt19937 random(2001);
    for (int run = 0; run < 20; ++run) {
        ToolOutput output;
        std::string twin;
        for (int step = 0; step < 200; ++step) {
            const std::string bytes(random() % 10'000, static_cast<char>(random() % 256));
            append(output, bytes);
            twin += bytes;
        }
        ASSERT_TRUE(output.text() == twin) << run;
    }
}

TEST(ToolOutput, KeepsItsTextWhenThereIsNoRoom) {
#ifdef EXIV2_WRAPPER_SANITIZED
    GTEST_SKIP() << "a sanitizer ends the program instead";
#endif
    ToolOutput output;
    append(output, "text");
    EXPECT_THROW(static_cast<void>(output.room(std::numeric_limits<std::size_t>::max() / 4)),
                 std::bad_alloc);
    EXPECT_EQ(output.text(), "text");
}

}  // namespace
}  // namespace exiv2_wp::internal
