#include <fcntl.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "photoinfo/photoinfo_fixture.h"
#include "support/read_file.h"
#include "support/skip_or_fail.h"

extern char** environ;

namespace test_support {
namespace {

namespace fs = std::filesystem;

constexpr auto kPrintAll = "Exif.Image.Model  Ascii  2  A\n";

/// A program in a process group of its own, as a shell starts it on a terminal.
class ForegroundProgram {
public:
    ForegroundProgram(std::vector<std::string> words, const fs::path& output,
                      const fs::path& error) {
        std::vector<char*> argv;
        for (std::string& word : words) {
            argv.push_back(word.data());
        }
        argv.push_back(nullptr);
        constexpr int kNewFile = O_WRONLY | O_CREAT | O_TRUNC;
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), kNewFile, 0600);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, error.c_str(), kNewFile, 0600);
        posix_spawnattr_t attributes;
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF);
        posix_spawnattr_setpgroup(&attributes, 0);
        sigset_t ctrlC;
        sigemptyset(&ctrlC);
        sigaddset(&ctrlC, SIGINT);  // which a program in the background ignores
        posix_spawnattr_setsigdefault(&attributes, &ctrlC);
        posix_spawn(&child_, argv.front(), &actions, &attributes, argv.data(), environ);
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
    }
    /// What a terminal does: every process of the group gets the signal.
    void pressCtrlC() const { ::kill(-child_, SIGINT); }
    int wait() const {
        int status = 0;
        ::waitpid(child_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

private:
    pid_t child_ = 0;
};

/// A terminal that keeps what programs write to it.
class Terminal {
public:
    explicit Terminal(unsigned short columns) : screen_(::posix_openpt(O_RDWR | O_NOCTTY)) {
        if (screen_ < 0 || ::grantpt(screen_) != 0 || ::unlockpt(screen_) != 0) {
            throw std::runtime_error("no terminal");
        }
        name_ = ::ptsname(screen_);
        // Held open, so that what was written stays to be read.
        line_ = ::open(name_.c_str(), O_RDWR | O_NOCTTY);
        const winsize size{24, columns, 0, 0};
        if (line_ < 0 || ::ioctl(line_, TIOCSWINSZ, &size) != 0) {
            throw std::runtime_error("no terminal");
        }
    }
    ~Terminal() {
        ::close(line_);
        ::close(screen_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    [[nodiscard]] const fs::path& name() const { return name_; }
    /// All that was written. A terminal hands its text over in parts and some time after it was
    /// written, so a last word of our own tells where it ends.
    [[nodiscard]] std::string written() const {
        constexpr std::string_view kEnd = "<end>";
        std::string text;
        bool open = ::write(line_, kEnd.data(), kEnd.size()) == static_cast<ssize_t>(kEnd.size());
        while (open && text.find(kEnd) == std::string::npos) {
            std::array<char, 256> part{};
            const ssize_t count = ::read(screen_, part.data(), part.size());
            open = count > 0;
            text.append(part.data(), open ? static_cast<std::size_t>(count) : 0);
        }
        return text.substr(0, text.find(kEnd));
    }

private:
    int screen_;
    int line_ = -1;
    fs::path name_;
};

/// What a reader sees of a line after all of the text, trailing blanks apart.
std::string lineLeftBy(std::string_view text) {
    std::string line;
    std::size_t column = 0;
    for (const char byte : text) {
        if (byte == '\r') {
            column = 0;
        } else {
            line.resize(std::max(line.size(), column + 1), ' ');
            line[column++] = byte;
        }
    }
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

class PhotoinfoScanOnPosix : public PhotoinfoTest {
protected:
    [[nodiscard]] std::vector<std::string> words(const char* command) const {
        return {PHOTOINFO, "--tools", tool.path(), command, photos.path(), "--jobs", "1"};
    }
    [[nodiscard]] std::vector<std::string> scannedFiles() const {
        std::vector<std::string> files;
        const std::string document = photoinfo({"scan", photos.path().native(), "--json"}).output;
        for (const Json& photo : Json::parse(document)) {
            files.push_back(
                fs::path(photo.at("file").get<std::string>()).lexically_relative(photos.path()));
        }
        return files;
    }

    TemporaryDirectory photos;
    fs::path output = scratch.path() / "output";
    fs::path error = scratch.path() / "error";
};

using Files = std::vector<std::string>;

TEST_F(PhotoinfoScanOnPosix, StopsAtCtrlCWithWhatItHas) {
    const fs::path first = photos.makeFile("a.jpg");
    const fs::path second = photos.makeFile("b.jpg");
    (void)photos.makeFile("c.jpg");
    tool.answerMetadata(kPrintAll, "", first);
    tool.answer({"-PXEkycv"}, {.gate = "never"}, second);
    const ForegroundProgram program(words("scan"), output, error);

    constexpr std::size_t kUntilTheSecondPhoto = 5;
    ASSERT_TRUE(tool.waitForCalls(kUntilTheSecondPhoto));
    program.pressCtrlC();

    EXPECT_EQ(program.wait(), 130);
    EXPECT_EQ(readFile(error), "photoinfo: stopped after 1 of 3 photos\n");
    EXPECT_NE(readFile(output).find(first.native() + "  A"), std::string::npos);
    EXPECT_EQ(readFile(output).find(second), std::string::npos);
}

// The portion under way is lost, those before it are shown.
TEST_F(PhotoinfoScanOnPosix, StopsAtCtrlCInTheMiddleOfAPortion) {
    constexpr int kPortion = 20;
    for (int i = 0; i < kPortion; ++i) {
        (void)photos.makeFile("a" + std::to_string(i) + ".jpg");
    }
    const fs::path hanging = photos.makeFile("b.jpg");
    tool.answer({"-PXEkycv"}, {.gate = "go"}, hanging);
    tool.answerMetadata(kPrintAll);
    tool.knowReadCall();
    const ForegroundProgram program(words("scan"), output, error);

    constexpr std::size_t kUntilTheSecondPortion = 4;
    ASSERT_TRUE(tool.waitForCalls(kUntilTheSecondPortion));
    program.pressCtrlC();
    tool.openGate("go");  // the photo that the run stopped at is read by itself

    EXPECT_EQ(program.wait(), 130);
    EXPECT_EQ(readFile(error), "photoinfo: stopped after 20 of 21 photos\n");
}

TEST_F(PhotoinfoScanOnPosix, WritesNoReportAfterCtrlC) {
    (void)photos.makeFile("a.jpg");
    const fs::path report = scratch.makeFile("report.html", "an earlier one");
    tool.answer({"-PXEkycv"}, {.gate = "never"});
    tool.answer({"-ep"}, {.output = "8 8 0 0 0 0\nprobe"});
    std::vector<std::string> arguments = words("report");
    arguments.insert(arguments.end(), {"-o", report});
    const ForegroundProgram program(arguments, output, error);

    constexpr std::size_t kUntilThePhoto = 3;
    ASSERT_TRUE(tool.waitForCalls(kUntilThePhoto));
    program.pressCtrlC();

    EXPECT_EQ(program.wait(), 130);
    EXPECT_EQ(readFile(error), "photoinfo: " + report.native() +
                                   " is not written\n"
                                   "photoinfo: stopped after 0 of 1 photo\n");
    EXPECT_EQ(readFile(report), "an earlier one");
}

TEST_F(PhotoinfoScanOnPosix, ShowsItsProgressOnATerminalAndWipesItAway) {
    (void)photos.makeFile("a.jpg");
    const Terminal terminal(60);

    EXPECT_EQ(ForegroundProgram(words("scan"), output, terminal.name()).wait(), 0);

    const std::string written = terminal.written();
    EXPECT_EQ(written.find("\r[>                                       ] 0/1"), 0U) << written;
    EXPECT_EQ(lineLeftBy(written), "") << written;
}

TEST_F(PhotoinfoScanOnPosix, FollowsNoLinksToFoldersAndIsCaughtInNoLoop) {
    (void)photos.makeFile("a.jpg");
    fs::create_directory(photos.path() / "below");
    fs::create_directory_symlink(photos.path(), photos.path() / "below" / "loop");
    fs::create_symlink(photos.path() / "self", photos.path() / "self");

    EXPECT_EQ(scannedFiles(), Files{"a.jpg"});
}

TEST_F(PhotoinfoScanOnPosix, TakesALinkToAPhotoForOne) {
    fs::create_symlink(scratch.makeFile("target"), photos.path() / "a.jpg");

    EXPECT_EQ(scannedFiles(), Files{"a.jpg"});
}

TEST_F(PhotoinfoScanOnPosix, ReportsALinkThatLeadsNowhere) {
    fs::create_symlink(photos.path() / "nowhere", photos.path() / "a.jpg");

    EXPECT_EQ(photoinfo({"scan", photos.path().native()}),
              (ProgramResult{4, "",
                             "photoinfo: " + (photos.path() / "a.jpg").native() +
                                 ": no such file\n"
                                 "photoinfo: 1 of 1 photo could not be asked about\n"}));
}

TEST_F(PhotoinfoScanOnPosix, PassesOverPipes) {
    ASSERT_EQ(::mkfifo((photos.path() / "pipe.jpg").c_str(), 0600), 0);

    EXPECT_EQ(scannedFiles(), Files{});
}

// The library would give the second photo the first one's answer.
TEST_F(PhotoinfoScanOnPosix, RefusesNamesThatDifferOnlyInLetterCase) {
    const fs::path first = photos.makeFile("A.JPG");
    const fs::path second = photos.makeFile("a.jpg");
    tool.answerMetadata(kPrintAll);

    const ProgramResult result = photoinfo({"scan", photos.path().native()});

    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(result.error, "photoinfo: " + second.native() +
                                ": differs only in letter case from " + first.native() +
                                "\nphotoinfo: 1 of 2 photos could not be asked about\n");
}

// A folder that nobody but root may read, until it dies.
class ClosedFolder {
public:
    explicit ClosedFolder(fs::path folder) : folder_(std::move(folder)) {
        fs::create_directory(folder_);
        fs::permissions(folder_, fs::perms::none);
    }
    ClosedFolder(const ClosedFolder&) = delete;
    ClosedFolder& operator=(const ClosedFolder&) = delete;
    ~ClosedFolder() { fs::permissions(folder_, fs::perms::owner_all); }

    [[nodiscard]] const fs::path& path() const { return folder_; }

private:
    fs::path folder_;
};

TEST_F(PhotoinfoScanOnPosix, ReportsAFolderThatCannotBeReadAndGoesOn) {
    (void)photos.makeFile("a.jpg");
    const ClosedFolder closed(photos.path() / "closed");
    std::vector<std::string> arguments = words("scan");
    if (::geteuid() == 0) {
        fs::permissions(photos.path(), fs::perms::all);
        fs::permissions(tool.path(), fs::perms::all);
        for (const auto& entry : fs::recursive_directory_iterator(tool.path())) {
            fs::permissions(entry, fs::perms::all);
        }
        const std::vector<std::string> asNobody = {"/usr/bin/setpriv", "--reuid=65534",
                                                   "--clear-groups"};
        std::vector<std::string> reach = asNobody;
        reach.insert(reach.end(), {"/usr/bin/test", "-x", PHOTOINFO});
        if (ForegroundProgram(reach, output, error).wait() != 0) {
            SKIP_OR_FAIL("photoinfo lies where only root may go");
        }
        arguments.insert(arguments.begin(), asNobody.begin(), asNobody.end());
    }

    EXPECT_EQ(ForegroundProgram(arguments, output, error).wait(), 4);
    EXPECT_EQ(readFile(error),
              "photoinfo: " + closed.path().native() + ": the folder cannot be read\n");
    EXPECT_NE(readFile(output).find("a.jpg"), std::string::npos);
}

}  // namespace
}  // namespace test_support
