// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "companion/companion_fixture.h"

namespace companion_tests {
namespace {

using test_support::Arguments;
using test_support::TemporaryDirectory;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace fs = std::filesystem;

class PassThrough : public Companion {
protected:
    /// Makes a program of the shell named "exiv2" in a new folder, and returns the folder.
    [[nodiscard]] std::string makeTool(const std::string& name, const std::string& script) const {
        fs::create_directory(folder.path() / name);
        const fs::path file = folder.makeFile(name + "/exiv2", "#!/bin/sh\n" + script + "\n");
        ::chmod(file.c_str(), 0700);
        return file.parent_path().native();
    }

    /// A folder that holds the companion as "exiv2".
    [[nodiscard]] std::string copyCompanion(const std::string& name) const {
        fs::create_directory(folder.path() / name);
        fs::copy_file(COMPANION, folder.path() / name / "exiv2");
        return (folder.path() / name).native();
    }

    [[nodiscard]] static ProgramEnd callWithPath(const std::string& path,
                                                 const std::vector<std::string>& arguments,
                                                 const fs::path& companion = COMPANION) {
        return runProgram(companion, arguments, {.environment = {{"PATH", path}}});
    }
};

TEST_F(PassThrough, HandsEveryByteOfTheArgumentsOver) {
    real.answer({"odd"}, {.exitCode = 0});
    const std::vector<std::string> odd = {
        "odd",      "",     " a  b ", "\"'\\$*", "line\nfeed",
        "\xff\xfe", "\x01", "-q",     "--",      "gr\xc3\xbc\xc3\x9f"};

    EXPECT_EQ(call(odd), ProgramEnd{});

    EXPECT_EQ(real.calls(), std::vector<Arguments>{odd});
}

TEST_F(PassThrough, LeavesOutputErrorAndExitCodeToTheTool) {
    const std::string bytes("out\0\r\n\xff", 7);
    real.answer({"show"}, {.output = bytes, .error = "err\n", .exitCode = 253});

    EXPECT_EQ(call({"show"}), (ProgramEnd{253, bytes, "err\n"}));
}

TEST_F(PassThrough, LeavesStandardInputToTheTool) {
    real.answer({"read"}, {.echoInput = true});
    const std::string input("in\0put\n", 7);

    EXPECT_EQ(call({"read"}, input), (ProgramEnd{0, input, ""}));
}

TEST_F(PassThrough, LetsTheToolDieByItsSignal) {
    real.answer({"die"}, {.signal = 9});

    EXPECT_EQ(call({"die"}), (ProgramEnd{-1, "", ""}));
}

TEST_F(PassThrough, CallsTheToolOnceAndAlone) {
    real.answer({"pr"}, {.output = "summary\n"});

    EXPECT_EQ(call({"pr", "a.jpg", "b.jpg"}), (ProgramEnd{0, "summary\n", ""}));

    EXPECT_EQ(real.calls(), (std::vector<Arguments>{{"pr", "a.jpg", "b.jpg"}}));
}

TEST_F(PassThrough, AnswersAsTheInstalledToolDoes) {
    const std::string photo = makePhoto("photo.jpg", {.lens = "A lens"});
    const std::vector<std::vector<std::string>> calls = {
        {"--version"},
        {},
        {"-PXEkycv", "-q", photo},
        {"-pt", photo},
        {"-pt", "no such file"},
        {"--key", "Exif.Image.Make", "--Print", "v", photo},
        {"--no-such-option"}};
    for (const std::vector<std::string>& arguments : calls) {
        EXPECT_EQ(runProgram(COMPANION, arguments), runProgram(REAL_EXIV2, arguments));
    }
}

TEST_F(PassThrough, TakesTheFirstToolInPath) {
    const std::string first = makeTool("first", "echo first");
    const std::string second = makeTool("second", "echo second");

    EXPECT_EQ(callWithPath("/no/such/folder:" + first + ":" + second, {}).output, "first\n");
}

TEST_F(PassThrough, PassesOverFoldersAndFilesThatAreNoPrograms) {
    fs::create_directories(folder.path() / "a" / "exiv2");
    fs::create_directory(folder.path() / "b");
    (void)folder.makeFile("b/exiv2", "not to be executed");
    const std::string tool = makeTool("c", "echo found");
    const std::string root = folder.path().native();

    EXPECT_EQ(callWithPath(root + "/a:" + root + "/b:" + tool, {}).output, "found\n");
}

TEST_F(PassThrough, NeverStartsWhatLiesInTheCurrentFolder) {
    const std::string tool = makeTool("tool", "echo wrong");
    const fs::path before = fs::current_path();
    fs::current_path(tool);
    const ProgramEnd end = callWithPath(":.:", {"--version"});
    fs::current_path(before);

    EXPECT_EQ(end.exitCode, 127);
    EXPECT_EQ(end.output, "");
    EXPECT_THAT(end.error, HasSubstr("found no exiv2"));
}

TEST_F(PassThrough, SaysThatTheNamedToolIsMissing) {
    const ProgramEnd end = runProgram(
        COMPANION, {"--version"}, {.environment = {{"EXIV2_COMPANION_EXIV2", "/no/such/tool"}}});

    EXPECT_EQ(end, (ProgramEnd{127, "",
                               "exiv2 companion: EXIV2_COMPANION_EXIV2 names no other program: "
                               "/no/such/tool\n"}));
}

TEST_F(PassThrough, SaysThatTheSystemRefusesTheTool) {
    const fs::path file = folder.makeFile("damaged",
                                          "\x7f"
                                          "ELF and nothing");
    ::chmod(file.c_str(), 0700);

    const ProgramEnd end = runProgram(COMPANION, {"--version"},
                                      {.environment = {{"EXIV2_COMPANION_EXIV2", file.native()}}});

    EXPECT_EQ(end.exitCode, 126);
    EXPECT_EQ(end.output, "");
    EXPECT_THAT(end.error, StartsWith("exiv2 companion: can't start " + file.native() + ": "));
}

TEST_F(PassThrough, NeverStartsItself) {
    const ProgramEnd named = runProgram(COMPANION, {"--version"},
                                        {.environment = {{"EXIV2_COMPANION_EXIV2", COMPANION}}});
    EXPECT_EQ(named.exitCode, 127);

    fs::create_directory(folder.path() / "link");
    fs::create_symlink(COMPANION, folder.path() / "link" / "exiv2");
    const std::string tool = makeTool("tool", "echo real");
    EXPECT_EQ(callWithPath((folder.path() / "link").native() + ":" + tool, {}).output, "real\n");
}

TEST_F(PassThrough, GetsPastCopiesOfItself) {
    const std::string copies = copyCompanion("a") + ":" + copyCompanion("b");
    const std::string tool = makeTool("tool", "echo real \"$@\"");

    EXPECT_EQ(callWithPath(copies + ":" + tool, {"x y"}), (ProgramEnd{0, "real x y\n", ""}));
    const ProgramEnd lost = callWithPath(copies, {"x y"}, folder.path() / "b" / "exiv2");
    EXPECT_EQ(lost.exitCode, 127);
    EXPECT_THAT(lost.error, HasSubstr("found no exiv2"));
}

TEST_F(PassThrough, GetsPastScriptsThatCallIt) {
    const std::string replaced = makeTool("a", "exec " COMPANION " \"$@\"");
    const std::string child = makeTool("b", COMPANION " \"$@\"");
    const std::string tool = makeTool("tool", "echo real \"$@\"; exit 3");

    EXPECT_EQ(callWithPath(replaced + ":" + child + ":" + tool, {"x y"}),
              (ProgramEnd{3, "real x y\n", ""}));
    EXPECT_EQ(callWithPath(replaced + ":" + child, {"x y"}).exitCode, 127);
}

TEST_F(PassThrough, RefusesANamedScriptThatCallsIt) {
    const std::string script = makeTool("a", "exec " COMPANION " \"$@\"") + "/exiv2";

    const ProgramEnd end =
        runProgram(COMPANION, {"--version"}, {.environment = {{"EXIV2_COMPANION_EXIV2", script}}});

    EXPECT_EQ(end,
              (ProgramEnd{127, "",
                          "exiv2 companion: EXIV2_COMPANION_EXIV2 names a tool that calls this "
                          "program: " +
                              script + "\n"}));
}

}  // namespace
}  // namespace companion_tests
