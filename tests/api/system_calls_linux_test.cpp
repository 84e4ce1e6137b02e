#include <gtest/gtest.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/log_capture.h"
#include "support/sanitized.h"
#include "support/tool_directory.h"
#include "vesk_logger/log_sink.h"

// What a cached answer asks of the operating system: nothing.

namespace exiv2_wp {
namespace {

namespace fs = std::filesystem;
using test_support::LogCapture;
using test_support::ToolDirectory;

// In a process of its own that the system ends at its first call but read, write and exit. Memory
// that the first calls have given back serves the later ones.
bool makesNoSystemCall(const std::function<void()>& action) {
    const pid_t child = fork();
    if (child == 0) {
        vesk::setLogSink([](const auto&) {});
        for (int i = 0; i < 10; ++i) {
            action();
        }
        prctl(PR_SET_SECCOMP, SECCOMP_MODE_STRICT);
        for (int i = 0; i < 1000; ++i) {
            action();
        }
        syscall(SYS_exit, EXIT_SUCCESS);
    }
    int status = 1;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

class CachedAnswer : public ::testing::Test {
protected:
    void SetUp() override {
#ifdef EXIV2_WRAPPER_SANITIZED
        GTEST_SKIP() << "a sanitizer makes system calls of its own";
#endif
        tool.answerMetadata("Exif.Image.Orientation Short 1 6\nExif.Image.Make Ascii 5 Maker\n");
        ASSERT_TRUE(initialize(tool.path()));
        file = tool.makeFile("photo.jpg");
        createImageMetadata(file, [](const auto&) {});
    }

    LogCapture log;
    ToolDirectory tool;
    fs::path file;
};

TEST_F(CachedAnswer, OfAnAbsolutePathMakesNoSystemCall) {
    EXPECT_TRUE(makesNoSystemCall([&] { createImageMetadata(file, [](const auto&) {}); }));
    EXPECT_TRUE(makesNoSystemCall([&] { readExiv2Orientation(file, [](int) {}); }));
    EXPECT_TRUE(makesNoSystemCall([&] { (void)readExiv2Win(file); }));
    EXPECT_TRUE(makesNoSystemCall([&] { const ExivReader reader(file.string()); }));
}

// The current directory has to be asked for. This also shows that a system call is noticed.
TEST_F(CachedAnswer, OfARelativePathMakesOne) {
    const fs::path relative = fs::relative(file);
    createImageMetadata(relative, [](const auto&) {});
    EXPECT_FALSE(makesNoSystemCall([&] { createImageMetadata(relative, [](const auto&) {}); }));
}

}  // namespace
}  // namespace exiv2_wp
