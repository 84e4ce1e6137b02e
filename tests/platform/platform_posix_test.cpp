#include <fcntl.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <future>
#include <latch>
#include <optional>
#include <string>
#include <thread>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "support/case_name.h"
#include "support/log_capture.h"
#include "support/this_process.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::Arguments;
using test_support::countOpenHandles;
using test_support::hasChildren;
using test_support::LogCapture;
using test_support::ToolDirectory;

// What a program of the system prints when it is run as the tool; nothing when the run failed.
std::optional<std::string> outputOf(const std::filesystem::path& program, const Arguments& args) {
    exiv2ExecutablePath = program;
    std::string output;
    return runExiv2Cli(args, output) ? std::optional(output) : std::nullopt;
}

// ---- file names

struct Name {
    const char* name;
    std::string bytes;
};

class FileName : public ::testing::TestWithParam<Name> {
protected:
    LogCapture log;
    ToolDirectory tool;
};

TEST_P(FileName, ReachesTheToolByteForByte) {
    tool.answer({"pr"}, {.output = "text"});
    ASSERT_TRUE(initialize(tool.path()));
    std::string output;
    EXPECT_TRUE(runExiv2Cli({"pr", GetParam().bytes}, output));
    EXPECT_EQ(tool.calls(), (std::vector<Arguments>{{"--version"}, {"pr", GetParam().bytes}}));
}

TEST_P(FileName, CanBeThatOfTheToolsFolder) {
    std::string folderName = GetParam().bytes;
    const ToolDirectory oddTool("exiv2.exe", folderName);
    EXPECT_TRUE(initialize(oddTool.path()));
    EXPECT_EQ(exiv2ExecutablePath.native(), oddTool.path().native() + "/exiv2.exe");
}

INSTANTIATE_TEST_SUITE_P(
    Bytes, FileName,
    ::testing::Values(Name{"InvalidUtf8", "\xFF\xFE\x80.jpg"}, Name{"CutOffUtf8", "photo\xE5\x86"},
                      Name{"SurrogateInUtf8", "\xED\xA0\x80.jpg"}, Name{"LineFeed", "a\nb.jpg"},
                      Name{"BlanksAround", " photo.jpg "}, Name{"Tab", "\ta.jpg"},
                      Name{"Quotes", "\"a' b\".jpg"}, Name{"Backslashes", "a\\ b\\"},
                      Name{"ShellCharacters", "$(x);`y`&*?|<>"},
                      Name{"ControlCharacters", "\x01\x1B\x7F"}),
    test_support::caseName<Name>);

// ---- what a tool finds when it starts

class StartedTool : public ::testing::Test {
protected:
    void TearDown() override { exiv2ExecutablePath.clear(); }
    LogCapture log;
};

TEST_F(StartedTool, HasTheHostsCurrentDirectory) {
    EXPECT_EQ(outputOf("/bin/pwd", {"-P"}), std::filesystem::current_path().native() + "\n");
}

TEST_F(StartedTool, HasTheHostsEnvironment) {
    const test_support::EnvironmentVariable variable("EXIV2_WRAPPER_TEST", "from the host");
    EXPECT_EQ(outputOf("/usr/bin/printenv", {"EXIV2_WRAPPER_TEST"}), "from the host\n");
}

TEST_F(StartedTool, HasItsOwnPathForAName) {
    EXPECT_EQ(outputOf("/bin/sh", {"-c", "echo $0"}), "/bin/sh\n");
}

// The fourth descriptor is the one by which ls reads the folder.
TEST_F(StartedTool, HasNoDescriptorOfTheHostButTheStandardOnes) {
    std::array<int, 8> left{};
    for (int& descriptor : left) {
        descriptor = ::open("/dev/null", O_RDONLY);  // without close-on-exec on purpose
    }
    ASSERT_EQ(::dup2(left[0], 200), 200);
    EXPECT_EQ(outputOf("/bin/ls", {"/proc/self/fd"}), "0\n1\n2\n3\n");
    for (const int descriptor : left) {
        ::close(descriptor);
    }
    ::close(200);
}

TEST(Pipes, AreClosedFromTheirBirthInEveryProgramThatTheHostStarts) {
    Pipe pipe;
    ASSERT_EQ(makePipe(pipe), 0U);
    for (const Handle* const end : {&pipe.readEnd, &pipe.writeEnd}) {
        EXPECT_EQ(::fcntl(static_cast<int>(end->value()), F_GETFD), FD_CLOEXEC);
    }
}

// ---- signals

// Gives the host another disposition for a signal until it dies.
class Disposition {
public:
    Disposition(int signal, void (*handler)(int)) : signal_(signal) {
        struct sigaction action {};
        action.sa_handler = handler;
        sigaction(signal_, &action, &before_);
    }
    Disposition(const Disposition&) = delete;
    Disposition& operator=(const Disposition&) = delete;
    ~Disposition() { sigaction(signal_, &before_, nullptr); }

    auto current() const {
        struct sigaction action {};
        sigaction(signal_, nullptr, &action);
        return action.sa_handler;
    }

private:
    int signal_;
    struct sigaction before_ {};
};

// Blocks every signal in this thread until it dies.
class BlockedSignals {
public:
    BlockedSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, &before_);
    }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

    bool isBlocked(int signal) const {
        sigset_t now;
        pthread_sigmask(SIG_BLOCK, nullptr, &now);
        return sigismember(&now, signal) == 1;
    }

private:
    sigset_t before_{};
};

// The bits of a line such as "SigIgn:	0000000000001000" in the tool's own status file.
unsigned long long signalBits(const std::string& line) {
    const auto output = outputOf("/bin/grep", {"^" + line, "/proc/self/status"});
    return output ? std::stoull(output->substr(output->find('\t') + 1), nullptr, 16) : ~0ULL;
}

bool holds(unsigned long long bits, int signal) {
    return ((bits >> (signal - 1)) & 1U) != 0;
}

TEST_F(StartedTool, HasNoSignalBlocked) {
    const BlockedSignals blocked;
    EXPECT_EQ(signalBits("SigBlk"), 0U);
    EXPECT_TRUE(blocked.isBlocked(SIGTERM));
    EXPECT_TRUE(blocked.isBlocked(SIGPIPE));
}

TEST_F(StartedTool, DoesNotIgnoreTheBrokenPipesThatTheHostIgnores) {
    const Disposition ignored(SIGPIPE, SIG_IGN);
    EXPECT_FALSE(holds(signalBits("SigIgn"), SIGPIPE));
    EXPECT_EQ(ignored.current(), SIG_IGN);
}

TEST_F(StartedTool, DoesNotIgnoreTheEndsOfChildrenThatTheHostIgnores) {
    const Disposition ignored(SIGCHLD, SIG_IGN);
    exiv2ExecutablePath = "/bin/grep";
    std::string output;
    EXPECT_FALSE(runExiv2Cli({"^SigIgn", "/proc/self/status"}, output));
    EXPECT_FALSE(holds(std::stoull(output.substr(output.find('\t') + 1), nullptr, 16), SIGCHLD));
}

// The exit code of a child is lost then, so there is no telling whether the tool succeeded.
TEST_F(StartedTool, CountsAsFailedWhenTheHostIgnoresTheEndsOfChildren) {
    const Disposition ignored(SIGCHLD, SIG_IGN);
    std::string output;
    exiv2ExecutablePath = "/bin/echo";
    EXPECT_FALSE(runExiv2Cli({"text"}, output));
    EXPECT_EQ(output, "text\n");
    EXPECT_EQ(ignored.current(), SIG_IGN);
}

TEST_F(StartedTool, SucceedsAgainOnceTheHostNoLongerIgnoresTheEndsOfChildren) {
    { const Disposition ignored(SIGCHLD, SIG_IGN); }
    EXPECT_EQ(outputOf("/bin/echo", {"text"}), "text\n");
}

volatile sig_atomic_t alarms = 0;

TEST_F(StartedTool, IsReadToItsEndThoughSignalsInterruptTheHost) {
    alarms = 0;
    const Disposition counted(SIGALRM, [](int) { alarms = alarms + 1; });
    const itimerval everyMillisecond = {{0, 1000}, {0, 1000}};
    setitimer(ITIMER_REAL, &everyMillisecond, nullptr);
    while (alarms < 20) {
        ASSERT_EQ(outputOf("/usr/bin/seq", {"20000"}).value_or("").size(), 108894U);
    }
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
}

TEST_F(StartedTool, CountsAsFailedWhenASignalEndsIt) {
    for (const char* const signal : {"TERM", "KILL", "SEGV", "PIPE"}) {
        EXPECT_EQ(outputOf("/bin/sh", {"-c", "kill -" + std::string(signal) + " $$"}), std::nullopt)
            << signal;
    }
}

// ---- many runs

// A tool that stays must not keep the pipe of another run open, whichever thread started it when.
TEST(ManyRuns, EndThoughOtherToolsStay) {
    constexpr int kStaying = 8;
    constexpr int kQuick = 8;
    const LogCapture log;
    ToolDirectory tool;
    tool.answer({"stay"}, {.gate = "end"});
    tool.answer({"quick"}, {.output = "text"});
    ASSERT_TRUE(initialize(tool.path()));

    std::latch start(kStaying + kQuick);
    const auto run = [&start](const char* argument, int times) {
        start.arrive_and_wait();
        std::string output;
        bool succeeded = true;
        for (int i = 0; i < times; ++i) {
            succeeded = runExiv2Cli({argument}, output) && succeeded;
        }
        return succeeded;
    };
    std::vector<std::future<bool>> staying;
    std::vector<std::future<bool>> quick;
    for (int i = 0; i < kQuick; ++i) {
        staying.push_back(std::async(std::launch::async, run, "stay", 1));
        quick.push_back(std::async(std::launch::async, run, "quick", 10));
    }
    for (std::future<bool>& result : quick) {
        EXPECT_EQ(result.wait_for(std::chrono::minutes(5)), std::future_status::ready);
    }
    tool.openGate("end");
    for (int i = 0; i < kQuick; ++i) {
        EXPECT_TRUE(staying[static_cast<std::size_t>(i)].get());
        EXPECT_TRUE(quick[static_cast<std::size_t>(i)].get());
    }
}

// Pages of memory that the host has written to, until it dies.
class WrittenPages {
public:
    static constexpr std::size_t kCount = 16384;

    WrittenPages()
        : bytes_(static_cast<char*>(::mmap(nullptr, kCount * kSize, PROT_READ | PROT_WRITE,
                                           MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
        ::madvise(bytes_, kCount * kSize, MADV_NOHUGEPAGE);
        write();
    }
    WrittenPages(const WrittenPages&) = delete;
    WrittenPages& operator=(const WrittenPages&) = delete;
    ~WrittenPages() { ::munmap(bytes_, kCount * kSize); }

    void write() {
        for (std::size_t page = 0; page < kCount; ++page) {
            bytes_[page * kSize] += 1;
        }
    }

private:
    static constexpr std::size_t kSize = 4096;
    char* bytes_;
};

long countPageFaults() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

// A child that begins as a copy of the host makes the system protect every page of it, and the host
// run into a fault at the next write to each: the more memory, the longer.
TEST_F(StartedTool, IsNoCopyOfTheHostsMemory) {
    WrittenPages pages;
    ASSERT_TRUE(outputOf("/bin/true", {}));
    const long before = countPageFaults();
    pages.write();
    EXPECT_LT(countPageFaults() - before, static_cast<long>(WrittenPages::kCount / 4));
}

TEST_F(StartedTool, LeavesNoDescriptorAndNoChildBehindAfterAThousandRuns) {
    ASSERT_TRUE(outputOf("/bin/true", {}));
    const std::size_t before = countOpenHandles();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_TRUE(outputOf("/bin/true", {}));
    }
    EXPECT_EQ(countOpenHandles(), before);
    EXPECT_FALSE(hasChildren());
}

TEST_F(StartedTool, LeavesNoDescriptorAndNoChildBehindAfterFailures) {
    ASSERT_TRUE(outputOf("/bin/true", {}));
    const std::size_t before = countOpenHandles();
    for (int i = 0; i < 100; ++i) {
        ASSERT_FALSE(outputOf("/bin/false", {}));
        ASSERT_FALSE(outputOf("/no/such/tool", {}));
    }
    EXPECT_EQ(countOpenHandles(), before);
    EXPECT_FALSE(hasChildren());
}

// What the system's functions keep for a start, which no operator new counts.
TEST(Processes, LeaveNoMemoryBehindWhenTheyDoNotStart) {
    Pipe pipe;
    ASSERT_EQ(makePipe(pipe), 0U);
    const auto failOften = [&pipe] {
        for (int i = 0; i < 200; ++i) {
            Process process;
            EXPECT_NE(startRun("/missing/exiv2.exe", {}, pipe.writeEnd, process), 0U);
        }
    };
    failOften();
    const std::size_t before = ::mallinfo2().uordblks;
    failOften();
    EXPECT_LT(::mallinfo2().uordblks, before + 10'000);
}

TEST(Pipes, LeaveTheSignalsOfAWriterAsTheyWere) {
    Pipe pipe;
    ASSERT_EQ(makePipe(pipe), 0U);
    EXPECT_EQ(writeAll(pipe.writeEnd, "text"), 0U);
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGPIPE), 0);
}

// One that the host has blocked and not taken yet is its own.
TEST(Pipes, LeaveASignalThatWaitsForTheWriter) {
    sigset_t sigpipe;
    sigemptyset(&sigpipe);
    sigaddset(&sigpipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &sigpipe, nullptr);
    ::raise(SIGPIPE);
    Pipe pipe;
    ASSERT_EQ(makePipe(pipe), 0U);
    pipe.readEnd.close();

    EXPECT_EQ(writeAll(pipe.writeEnd, "text"), static_cast<ErrorCode>(EPIPE));

    sigset_t pending;
    sigpending(&pending);
    ASSERT_EQ(sigismember(&pending, SIGPIPE), 1);
    int taken = 0;
    ::sigwait(&sigpipe, &taken);
    pthread_sigmask(SIG_UNBLOCK, &sigpipe, nullptr);
}

// Or the reader of a host's output would wait for the guard's end too.
TEST(Guard, HoldsNoOutputOfTheHosts) {
    Pipe input;
    Pipe output;
    ASSERT_EQ(makePipe(input) + makePipe(output), 0U);
    Service service;
    ASSERT_EQ(startService("/bin/cat", "", input.readEnd, output.writeEnd, service), 0U);
    const std::filesystem::path descriptors =
        "/proc/" + std::to_string(service.guard.value()) + "/fd";
    EXPECT_EQ(std::filesystem::read_symlink(descriptors / "1"), "/dev/null");
    EXPECT_EQ(std::filesystem::read_symlink(descriptors / "2"), "/dev/null");
    input.writeEnd.close();
    awaitQuit(service);
}

TEST(Processes, AreReapedWhenTheirOwnerDies) {
    {
        Pipe pipe;
        Process process;
        ASSERT_EQ(makePipe(pipe), 0U);
        ASSERT_EQ(startRun("/bin/true", {}, pipe.writeEnd, process), 0U);
        EXPECT_TRUE(hasChildren());
    }
    EXPECT_FALSE(hasChildren());
}

}  // namespace
}  // namespace exiv2_wp::internal
