#include <gtest/gtest.h>

#include <algorithm>

#include "exiftool/host_program.h"
#include "exiftool/processes.h"
#include "real_exiftool/real_tool.h"
#include "support/skip_or_fail.h"
#include "support/this_process.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

const std::string kMarkerLine = "log|0|readTags: ignoring line: |{ready}\n";

// The real tool in folders and with photos of awkward names, each in a host of its own.
class RealToolLife : public ::testing::Test {
protected:
    void SetUp() override {
        if (realToolFolder().empty()) {
            SKIP_OR_FAIL("the real exiftool is missing");
        }
        if (!fs::exists(photo)) {
            SKIP_OR_FAIL(photo.string() + " is missing");
        }
    }

    [[nodiscard]] fs::path photoNamed(const std::u8string& name) const {
        fs::path copy = folder.path() / name;
        fs::copy_file(photo, copy);
        return copy;
    }

    [[nodiscard]] static std::string makeReadBy(const fs::path& tool, const fs::path& file) {
        return runHost({"init", utf8(tool), "tags", utf8(file), "-Make"}).output;
    }

    const std::string expected = "init 1\n" + kMarkerLine + "tags Make=Canon\n";
    fs::path photo = fs::path(PHOTOS) / "Canon_40D.jpg";
    TemporaryDirectory folder{"real-tool-"};
};

TEST_F(RealToolLife, ReadsAPhotoWithBlanksInItsPath) {
    EXPECT_EQ(makeReadBy(realToolFolder(), photoNamed(u8"a photo  of mine.jpg")), expected);
}

TEST_F(RealToolLife, ReadsAPhotoWhosePathIsNotAscii) {
    EXPECT_EQ(makeReadBy(realToolFolder(), photoNamed(u8"F\u00f6t\u00f6 \u5199\u771f.jpg")),
              expected);
}

// Of letters that the ANSI code page knows: Wine tells a program its long path even when it is
// started by the short one, and the tool looks for its files by that path in the ANSI code page.
TEST_F(RealToolLife, RunsInAFolderWhosePathIsNotAscii) {
    const fs::path tool = folder.path() / u8"W\u00e9rkzeug-\u00df";
    copyRealToolTo(tool);
    EXPECT_EQ(makeReadBy(tool, photo), expected);
}

// A locale that the machine lacks: Perl warns of it in the first answer, unless the host has told
// it not to. Whether it does is the host's business.
TEST_F(RealToolLife, HasTheHostsEnvironment) {
    const EnvironmentVariable locale("LC_ALL", "xx_XX.UTF-8");
    EXPECT_NE(makeReadBy(realToolFolder(), photo).find(" perl="), std::string::npos);

    const EnvironmentVariable silence("PERL_BADLANG", "0");
    EXPECT_EQ(makeReadBy(realToolFolder(), photo), expected);
}

TEST_F(RealToolLife, EndsWithAHostThatIsKilled) {
    const fs::path tool = folder.path() / "tool";
    copyRealToolTo(tool);
    const fs::path ready = folder.path() / "ready";
    const fs::path go = folder.path() / "go";
    std::future<ProgramResult> host = startHost({"init", utf8(tool), "tags", utf8(photo), "-Make",
                                                 "touch", utf8(ready), "wait", utf8(go), "die"});
    ASSERT_TRUE(waitForFile(ready));
    const std::set<unsigned long> running = exiftoolProcesses(tool);
    EXPECT_FALSE(running.empty());

    static_cast<void>(folder.makeFile("go"));

    EXPECT_NE(host.get().exitCode, 0);
    EXPECT_TRUE(std::all_of(running.begin(), running.end(), endsInTime));
}

TEST_F(RealToolLife, IsGoneAfterUninitialize) {
    EXPECT_EQ(runHost({"init", utf8(realToolFolder()), "tags", utf8(photo), "-Make", "uninit",
                       "tags", utf8(photo), "-Make"})
                  .output,
              expected + "uninit\ntags\n");
}

}  // namespace
}  // namespace test_support
