// SPDX-License-Identifier: GPL-2.0-or-later
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "exiv2/tool_fixture.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/current_directory.h"
#include "support/log_capture.h"
#include "support/skip_or_fail.h"

namespace exiv2_tool {
namespace {

namespace fs = std::filesystem;

/// What the library says of a photo.
std::string makerOf(const fs::path& photo) {
    std::string maker;
    exiv2_wp::createImageMetadata(
        photo, [&](const exiv2_wp::SExivMetadataInfo& info) { maker = info.cameraMaker; });
    return maker;
}

class PosixCalls : public ToolTest {
protected:
    /// Runs a script of the shell in which "$@" is a call of the tool.
    [[nodiscard]] ProgramResult inShell(const std::string& script, const Call& arguments) const {
        std::vector<std::string> texts = {"-c", script, "sh", EXIV2_TOOL};
        for (const fs::path& argument : arguments) {
            texts.push_back(argument.native());
        }
        return test_support::runProgram("/bin/sh", texts, outputs_.path());
    }

private:
    test_support::TemporaryDirectory outputs_;
};

TEST_F(PosixCalls, TakeNamesThatAreNoText) {
    const fs::path photo = makePhoto("\xff\xfe\n.jpg", {});

    EXPECT_EQ(call({"pr", photo}).exitCode, 0);
}

TEST_F(PosixCalls, ReachFilesInDeepFolders) {
    const test_support::CurrentDirectory inside(folder.path());
    fs::path deep;
    for (int i = 0; i < 20; ++i) {
        deep /= std::string(200, 'd');
        if (i == 10) {
            fs::create_directories(deep);
            fs::current_path(deep);
            deep = fs::path();
        }
    }
    fs::create_directories(deep);
    std::ofstream(deep / "photo.jpg", std::ios::binary) << photoBytes({});

    EXPECT_EQ(call({"pr", deep / "photo.jpg"}).exitCode, 0);
}

// The photo gets the number of the closed standard input then.
TEST_F(PosixCalls, ReadAPhotoWhereStandardInputIsClosed) {
    const fs::path photo = makePhoto("photo.jpg", {});

    EXPECT_EQ(inShell("\"$@\" <&-", {"-PXEkycv", "-q", photo}), call({"-PXEkycv", "-q", photo}));
}

TEST_F(PosixCalls, NeverWaitAtANamedPipe) {
    const fs::path pipe = folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);

    EXPECT_EQ(call({"-PXEkycv", "-q", pipe}),
              (ProgramResult{1, "", "exiv2.exe: " + pipe.string() + ": not a regular file\n"}));
}

TEST_F(PosixCalls, ReadNoDevice) {
    EXPECT_EQ(call({"-PXEkycv", "-q", "/dev/zero"}).exitCode, 1);
}

TEST_F(PosixCalls, LeaveTheTimeOfTheLastReading) {
    const fs::path photo = makePhoto("photo.jpg", {});
    const timespec longAgo[2] = {{.tv_sec = 1000000, .tv_nsec = 0},
                                 {.tv_sec = 2000000, .tv_nsec = 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, photo.c_str(), longAgo, 0), 0);

    EXPECT_EQ(call({"-PXEkycv", "-q", photo}).exitCode, 0);

    struct stat after {};
    ASSERT_EQ(::stat(photo.c_str(), &after), 0);
    EXPECT_EQ(after.st_atim.tv_sec, 1000000);
    EXPECT_EQ(after.st_mtim.tv_sec, 2000000);
}

// Without the right to act as the owner of any file, the system refuses to leave that time alone.
TEST_F(PosixCalls, ReadPhotosOfOtherOwners) {
    constexpr ::uid_t kNobody = 65534;
    const std::string asSomebodyElse =
        "exec setpriv --inh-caps=-fowner --bounding-set=-fowner -- \"$@\"";
    const fs::path photo = makePhoto("photo.jpg", {});
    const ProgramResult expected = call({"-PXEkycv", "-q", photo});
    if (::chown(photo.c_str(), kNobody, static_cast<::gid_t>(-1)) != 0 ||
        inShell(asSomebodyElse, {"--version"}).exitCode != 0) {
        SKIP_OR_FAIL("only root can give a photo to another owner, and drop a right");
    }

    EXPECT_EQ(inShell(asSomebodyElse, {"-PXEkycv", "-q", photo}), expected);
}

TEST_F(PosixCalls, SayThatTheOutputIsFull) {
    const fs::path photo = makePhoto("photo.jpg", {});

    EXPECT_EQ(inShell("exec \"$@\" >/dev/full", {"-PXEkycv", "-q", photo}),
              (ProgramResult{1, "", "exiv2.exe: standard output can't be written\n"}));
}

TEST_F(PosixCalls, EndQuietlyWhenNobodyReads) {
    const fs::path photo =
        folder.makeFile("photo.jpg", photoBytes({.thumbnail = makeJpeg({2000, 2000})}));
    for (const char* script : {"\"$@\" | :", "trap '' PIPE; \"$@\" | :"}) {
        EXPECT_EQ(inShell(script, {"-ep", photo, "1", "1"}).error, "") << script;
    }
}

// The first part is larger than a pipe. So it is out only when somebody reads, who makes the second
// file before that.
TEST_F(PosixCalls, WriteAPartBeforeTheyOpenTheNextFile) {
    std::string numbers = "200";
    for (int i = 0; i < 18000; ++i) {
        numbers += " 200";
    }
    const fs::path first =
        makePhoto("first.jpg", {.tags = {{"Exif.Photo.DeviceSettingDescription", numbers}}});
    ASSERT_GT(call({"-PXEkycv", "-q", first}).output.size(), 65536U);
    const fs::path second = folder.path() / "second.jpg";

    const ProgramResult result = inShell(
        "\"$@\" | { cp '" + first.native() + "' '" + second.native() + "'; grep -a '^1 '; }",
        {"--read", first, second});

    EXPECT_THAT(result.output, ::testing::StartsWith("1 0 ")) << result.error;
}

// The tool hangs at its output, which nobody reads, when the signal comes.
TEST_F(PosixCalls, ThatEndByASignalAreFailedRunsToTheLibrary) {
    const test_support::TemporaryDirectory tools;
    const fs::path tool = tools.makeFile("exiv2.exe",
                                         "#!/bin/sh\n"
                                         "case $1 in -ep) ;; *) exec " EXIV2_TOOL
                                         " \"$@\" ;; esac\n"
                                         "mkfifo \"$0.pipe\" && exec 3<>\"$0.pipe\"\n" EXIV2_TOOL
                                         " \"$@\" >&3 3<&- &\n"
                                         "kill -SEGV $!; wait $!\n");
    ::chmod(tool.c_str(), 0700);
    const fs::path photo =
        folder.makeFile("photo.jpg", photoBytes({.larger = makeJpeg({3000, 3000})}));
    ASSERT_TRUE(exiv2_wp::initialize(tools.path()));
    exiv2_wp::TopBottomOffset offset;

    EXPECT_FALSE(exiv2_wp::readExiv2Thumbnail(
        photo, "", 1, 1, offset, [](auto&&...) {}, [](int) {}, [](auto&&...) { return true; },
        [](auto&&...) { return true; }));

    EXPECT_EQ(makerOf(photo), "Camera");
}

// libexiv2 looks through gigabytes of nothing for the next segment when the signal comes.
TEST_F(PosixCalls, ThatEndByASignalWhileTheyReadAreFailedRunsToTheLibrary) {
    const test_support::TemporaryDirectory tools;
    const fs::path tool = tools.makeFile(
        "exiv2.exe",
        "#!/bin/sh\n"
        "case \"$*\" in *endless*) ;; *) exec " EXIV2_TOOL " \"$@\" ;; esac\n" EXIV2_TOOL
        " \"$@\" &\n"
        "until grep -q endless /proc/$!/maps\n"
        "do grep -q '^State:.[^Z]' /proc/$!/status || exit 9; done\n"
        "kill -SEGV $!; wait $!\n");
    ::chmod(tool.c_str(), 0700);
    const fs::path endless = folder.makeFile("endless.jpg", "\xFF\xD8");
    fs::resize_file(endless, std::uintmax_t{1} << 32U);
    const fs::path photo = makePhoto("photo.jpg", {});
    ASSERT_TRUE(exiv2_wp::initialize(tools.path()));
    test_support::LogCapture log;

    EXPECT_EQ(makerOf(endless), "");
    EXPECT_THAT(log.lines(), ::testing::Contains(test_support::failureLine(
                                 test_support::kReadExifMetadataSignature,
                                 "Exiv2 failed run -PXEkycv cli command for ", endless)));
    EXPECT_EQ(makerOf(photo), "Camera");
}

}  // namespace
}  // namespace exiv2_tool
