#include <algorithm>
#include <regex>
#include <set>

#include "photoinfo/photoinfo_fixture.h"
#include "support/read_file.h"
#include "support/skip_or_fail.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

using Words = std::set<std::string>;

Words matches(const std::string& text, const std::regex& pattern) {
    Words found;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end;
         ++match) {
        found.insert((*match)[1]);
    }
    return found;
}

std::string part(const std::string& text, const std::string& begin, const std::string& end) {
    const std::size_t first = text.find(begin);
    const std::string rest = first == std::string::npos ? "" : text.substr(first + begin.size());
    return rest.substr(0, rest.find(end));
}

/// What the program says of itself, against what manual and completions say of it.
class PhotoinfoInTheShell : public PhotoinfoProgramTest {
protected:
    [[nodiscard]] Words commands() const {
        return matches(part(run({"--help"}).output, "Subcommands:\n", "\n\n"),
                       std::regex("(?:^|\n)  ([a-z-]+)"));
    }
    /// The long options of a command, or those beside any.
    [[nodiscard]] Words options(const std::string& command) const {
        const std::vector<NativeString> arguments =
            command.empty() ? std::vector<NativeString>{"--help"}
                            : std::vector<NativeString>{command, "--help"};
        return matches(part(run(arguments).output, "Options:\n", "\n\n"),
                       std::regex("(?:^|\n)  (?:-[a-z],)?(--[a-z-]+)"));
    }
    /// What bash offers for the last word.
    [[nodiscard]] Words completed(const std::string& line) const {
        const std::string script = std::string("source '") + COMPLETIONS +
                                   "/photoinfo.bash'\nCOMP_WORDS=(" + line +
                                   ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_photoinfo\n"
                                   "printf '%s\\n' \"${COMPREPLY[@]}\"";
        return matches(runProgram("/bin/bash", {"-c", script}, scratch.path()).output,
                       std::regex("([^\n]+)\n"));
    }
    /// What fish offers for the end of a line.
    [[nodiscard]] Words completedInFish(const std::string& line) const {
        const std::string script =
            std::string("source '") + COMPLETIONS + "/photoinfo.fish'\ncomplete -C '" + line + "'";
        return matches(runProgram(FISH, {"--no-config", "-c", script}, scratch.path()).output,
                       std::regex("([^\t\n]+)[^\n]*\n"));
    }
    /// The manual without the escapes of hyphens.
    [[nodiscard]] static std::string manual() {
        return std::regex_replace(readFile(MANUAL), std::regex(R"(\\-)"), "-");
    }
};

TEST_F(PhotoinfoInTheShell, HasCommandsAndOptionsToCompareWith) {
    EXPECT_EQ(commands().size(), 15U);
    EXPECT_EQ(options("scan"),
              (Words{"--help", "--help-all", "--jobs", "--all", "--json", "--csv"}));
}

TEST_F(PhotoinfoInTheShell, DescribesEveryCommandAndOptionInTheManual) {
    const std::string text = manual();
    const std::string shared = part(text, ".SH OPTIONS", ".SH COMMANDS");
    for (const std::string& option : options("")) {
        EXPECT_NE(shared.find(option), std::string::npos) << option;
    }
    EXPECT_EQ(matches(text, std::regex("\n\\.SS ([a-z-]+)")), commands());
    for (const std::string& command : commands()) {
        const std::string own = part(text, "\n.SS " + command + "\n", "\n.S");
        for (const std::string& option : options(command)) {
            EXPECT_NE((own + shared).find(option), std::string::npos) << command << " " << option;
        }
    }
}

TEST_F(PhotoinfoInTheShell, NamesNoOptionInTheManualThatIsNone) {
    for (const std::string& command : commands()) {
        const Words known = options(command);
        for (const std::string& option : matches(part(manual(), "\n.SS " + command + "\n", "\n.S"),
                                                 std::regex("(--[a-z-]+)"))) {
            EXPECT_TRUE(known.contains(option) || option == "--tools") << command << " " << option;
        }
    }
}

TEST_F(PhotoinfoInTheShell, NamesTheExtensionsOfPhotosInTheManual) {
    const Words known =
        matches(part(run({"scan", "--help"}).output, "in any letter case:\n", "\n\n"),
                std::regex("([a-z0-9]+)"));

    EXPECT_EQ(matches(part(manual(), "in any letter case:\n", ".\n"), std::regex("([a-z0-9]+)")),
              known);
}

TEST_F(PhotoinfoInTheShell, CompletesCommandsInBash) {
    EXPECT_EQ(completed("photoinfo ''"), commands());
    EXPECT_EQ(completed("photoinfo s"), (Words{"summary", "scan"}));
    EXPECT_EQ(completed("photoinfo --tools tools s"), (Words{"summary", "scan"}));
}

TEST_F(PhotoinfoInTheShell, CompletesOptionsInBash) {
    EXPECT_EQ(completed("photoinfo --"), [this] {
        Words all = options("");
        all.insert("--tools");
        return all;
    }());
    for (const std::string& command : commands()) {
        Words expected = options(command);
        expected.insert({"--tools", "--verbose"});
        EXPECT_EQ(completed("photoinfo " + command + " --"), expected) << command;
    }
}

TEST_F(PhotoinfoInTheShell, CompletesFilesAndFoldersInBash) {
    const TemporaryDirectory folder;
    const std::string file = folder.makeFile("a photo.jpg");
    const std::string album = folder.path() / "an album";
    fs::create_directory(album);
    const std::string begin = "'" + (folder.path() / "a").native() + "'";

    EXPECT_EQ(completed("photoinfo summary " + begin), (Words{file, album}));
    EXPECT_EQ(completed("photoinfo scan " + begin), Words{album});
    EXPECT_EQ(completed("photoinfo --tools " + begin), Words{album});
    EXPECT_EQ(completed("photoinfo copy --unit i"), Words{"inch"});
    EXPECT_EQ(completed("photoinfo scan --jobs ''"), Words{});
}

TEST_F(PhotoinfoInTheShell, CompletesInFish) {
    if (!fs::exists(FISH)) {
        SKIP_OR_FAIL("There is no fish here.");
    }
    const TemporaryDirectory folder;
    (void)folder.makeFile("a photo.jpg");
    fs::create_directory(folder.path() / "album");
    const std::string begin = folder.path().native() + "/a";

    EXPECT_EQ(completedInFish("photoinfo "), commands());
    EXPECT_EQ(completedInFish("photoinfo s"), (Words{"summary", "scan"}));
    EXPECT_EQ(completedInFish("photoinfo copy --unit i"), Words{"inch"});
    EXPECT_EQ(completedInFish("photoinfo summary " + begin),
              (Words{begin + " photo.jpg", begin + "lbum/"}));
    EXPECT_EQ(completedInFish("photoinfo scan " + begin), Words{begin + "lbum/"});
    for (const std::string& command : commands()) {
        Words expected = options(command);
        expected.insert({"--tools", "--verbose"});
        EXPECT_EQ(completedInFish("photoinfo " + command + " --"), expected) << command;
    }
}

TEST_F(PhotoinfoInTheShell, NamesEveryCommandAndOptionForOtherShells) {
    const std::string zsh = readFile(fs::path(COMPLETIONS) / "_photoinfo");
    const std::string fish = readFile(fs::path(COMPLETIONS) / "photoinfo.fish");
    for (const std::string& command : commands()) {
        EXPECT_NE(zsh.find("'" + command + ":"), std::string::npos) << command;
        EXPECT_NE(fish.find(" -a " + command + " "), std::string::npos) << command;
        for (const std::string& option : options(command)) {
            EXPECT_NE(zsh.find(option), std::string::npos) << option;
            EXPECT_NE(fish.find(" -l " + option.substr(2) + " "), std::string::npos) << option;
        }
    }
}

}  // namespace
}  // namespace test_support
