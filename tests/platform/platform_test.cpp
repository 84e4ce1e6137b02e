#include "exiv2_wrapper/platform/platform.h"

#include <gtest/gtest.h>

#include <array>
#include <type_traits>
#include <utility>

#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::native;
using test_support::ToolDirectory;

static_assert(!std::is_copy_constructible_v<Handle> && !std::is_copy_assignable_v<Handle>);
static_assert(!std::is_copy_constructible_v<Process> && !std::is_copy_assignable_v<Process>);
static_assert(std::is_nothrow_move_constructible_v<Handle>);
static_assert(std::is_nothrow_move_constructible_v<Process>);

// A pipe's read end sees the end of the file once every write end is closed; that is how these
// tests see a handle closed.
class HandleOfAPipe : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(makePipe(pipe), 0U); }

    bool sawTheEnd() const {
        std::array<char, 4> buffer{};
        return readSome(pipe.readEnd, buffer) == 0;
    }

    Pipe pipe;
};

TEST(Handle, HoldsNothingAtFirst) {
    const Handle handle;
    EXPECT_FALSE(handle.isOpen());
    EXPECT_EQ(handle.value(), Handle::kNone);
}

TEST(Handle, ClosesNothingWhenItHoldsNothing) {
    Handle handle;
    handle.close();
    EXPECT_FALSE(handle.isOpen());
}

TEST_F(HandleOfAPipe, IsClosedWithItsOwner) {
    { const Handle owner = std::move(pipe.writeEnd); }
    EXPECT_TRUE(sawTheEnd());
}

TEST_F(HandleOfAPipe, IsClosedOnce) {
    pipe.writeEnd.close();
    EXPECT_FALSE(pipe.writeEnd.isOpen());
    pipe.writeEnd.close();
    EXPECT_TRUE(sawTheEnd());
}

TEST_F(HandleOfAPipe, MovesIntoANewOwner) {
    const std::intptr_t value = pipe.writeEnd.value();
    const Handle owner = std::move(pipe.writeEnd);
    EXPECT_EQ(owner.value(), value);
    EXPECT_FALSE(pipe.writeEnd.isOpen());  // moved from: that's the matter
}

TEST_F(HandleOfAPipe, IsClosedWhenAnotherMovesIntoItsPlace) {
    Pipe other;
    ASSERT_EQ(makePipe(other), 0U);
    const std::intptr_t value = other.writeEnd.value();

    pipe.writeEnd = std::move(other.writeEnd);

    EXPECT_EQ(pipe.writeEnd.value(), value);
    EXPECT_FALSE(other.writeEnd.isOpen());  // moved from: that's the matter
    EXPECT_TRUE(sawTheEnd());
}

TEST_F(HandleOfAPipe, StaysWhenItMovesIntoItself) {
    Handle& same = pipe.writeEnd;
    const std::intptr_t value = same.value();
    pipe.writeEnd = std::move(same);
    EXPECT_EQ(pipe.writeEnd.value(), value);
}

TEST_F(HandleOfAPipe, IsGivenUpUnclosed) {
    const std::intptr_t value = pipe.writeEnd.release();
    EXPECT_FALSE(pipe.writeEnd.isOpen());
    pipe.writeEnd = Handle(value);
    pipe.writeEnd.close();
    EXPECT_TRUE(sawTheEnd());
}

// A started stand-in that has its own pipe.
class ProcessOfATool : public ::testing::Test {
protected:
    Process start(const std::string& argument) {
        Pipe pipe;
        Process process;
        EXPECT_EQ(makePipe(pipe), 0U);
        const std::vector<NativeString> arguments = {native(argument)};
        EXPECT_EQ(startRun(tool.toolPath(), arguments, pipe.writeEnd, process), 0U);
        return process;
    }

    void SetUp() override {
        tool.answer({"three"}, {.exitCode = 3});
        tool.answer({"four"}, {.exitCode = 4});
    }

    ToolDirectory tool;
};

TEST(Process, IsNotStartedAtFirst) {
    EXPECT_FALSE(Process().isStarted());
}

TEST_F(ProcessOfATool, MovesIntoANewOwner) {
    Process first = start("three");
    Process second = std::move(first);
    EXPECT_FALSE(first.isStarted());  // moved from: that's the matter
    EXPECT_EQ(waitForExitCode(second), 3U);
    EXPECT_FALSE(second.isStarted());
}

TEST_F(ProcessOfATool, IsLetGoWhenAnotherMovesIntoItsPlace) {
    Process first = start("three");
    Process second = start("four");
    first = std::move(second);
    EXPECT_FALSE(second.isStarted());  // moved from: that's the matter
    EXPECT_EQ(waitForExitCode(first), 4U);
}

TEST_F(ProcessOfATool, StaysWhenItMovesIntoItself) {
    Process process = start("three");
    Process& same = process;
    process = std::move(same);
    EXPECT_EQ(waitForExitCode(process), 3U);
}

TEST_F(ProcessOfATool, IsForgottenWhenReleased) {
    Process process = start("three");
    Process other(process.value(), Handle::kNone);
    process.release();
    EXPECT_FALSE(process.isStarted());
    EXPECT_EQ(waitForExitCode(other), 3U);
}

TEST(StartRun, TellsWhyAToolDoesNotStart) {
    const ToolDirectory tool;
    Pipe pipe;
    Process process;
    ASSERT_EQ(makePipe(pipe), 0U);
    EXPECT_NE(startRun(tool.path() / "missing.exe", {}, pipe.writeEnd, process), 0U);
    EXPECT_FALSE(process.isStarted());
}

TEST(LibraryFile, IsAFileThatExists) {
    EXPECT_TRUE(std::filesystem::is_regular_file(libraryFile()));
    EXPECT_TRUE(libraryFile().is_absolute());
}

}  // namespace
}  // namespace exiv2_wp::internal
