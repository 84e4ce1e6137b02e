#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

class Photoinfo : public PhotoinfoTest {
protected:
    // The result for a tool folder in which nothing useful lies.
    [[nodiscard]] ProgramResult withTools(const std::filesystem::path& directory) const {
        return run({native("summary"), native("photo.jpg"), native("--tools"), directory.native()});
    }
};

struct UsageCase {
    const char* name;
    std::vector<const char*> arguments;
    const char* error;
};

class PhotoinfoUsage : public PhotoinfoTest, public ::testing::WithParamInterface<UsageCase> {};

TEST_P(PhotoinfoUsage, IsExplainedWithAnExitCodeOfItsOwn) {
    std::vector<NativeString> arguments;
    for (const char* const argument : GetParam().arguments) {
        arguments.push_back(native(argument));
    }

    EXPECT_EQ(run(arguments), (ProgramResult{2, "", GetParam().error}));
}

INSTANTIATE_TEST_SUITE_P(
    Errors, PhotoinfoUsage,
    ::testing::Values(
        UsageCase{"NoCommand", {}, "photoinfo: no command is given; --help lists them\n"},
        UsageCase{
            "UnknownCommand",
            {"develop"},
            "photoinfo: The following argument was not expected: develop; --help tells more\n"},
        UsageCase{"NoFile", {"summary"}, "photoinfo: FILE is required; --help tells more\n"},
        UsageCase{"UnknownOption",
                  {"summary", "a.jpg", "--colour"},
                  "photoinfo: The following argument was not expected: --colour; "
                  "--help tells more\n"},
        UsageCase{"NoFolder",
                  {"summary", "a.jpg", "--tools"},
                  "photoinfo: --tools: 1 required DIR missing; --help tells more\n"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(Photoinfo, ExplainsItself) {
    const ProgramResult result = run({native("--help")});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.output.find("Shows what photos say about themselves.\n"), 0U);
    EXPECT_NE(result.output.find("  3  no exiv2.exe that works\n"), std::string::npos);
}

TEST_F(Photoinfo, TellsItsVersion) {
    EXPECT_EQ(run({native("--version")}),
              (ProgramResult{0, "photoinfo " PHOTOINFO_VERSION "\n", ""}));
}

TEST_F(Photoinfo, SaysThatTheToolFolderIsMissing) {
    const auto folder = scratch.path() / "nowhere";

    EXPECT_EQ(withTools(folder),
              (ProgramResult{3, "", "photoinfo: " + shown(folder) + ": no such folder\n"}));
}

TEST_F(Photoinfo, SaysThatTheToolIsMissingInTheFolder) {
    EXPECT_EQ(withTools(scratch.path()), (ProgramResult{3, "",
                                                        "photoinfo: " + shown(scratch.path()) +
                                                            ": no exiv2.exe in this folder\n"}));
}

TEST_F(Photoinfo, SaysThatTheToolDoesNotRun) {
    tool.answer({"--version"}, {.exitCode = 1});

    EXPECT_EQ(withTools(tool.path()),
              (ProgramResult{3, "",
                             "photoinfo: " + shown(tool.path()) +
                                 ": the exiv2.exe of this folder does not run\n"}));
}

TEST_F(Photoinfo, LooksForTheToolBesideTheLibraryWhenNoFolderIsNamed) {
    EXPECT_EQ(run({native("summary"), native("photo.jpg")}),
              (ProgramResult{3, "",
                             "photoinfo: no working exiv2.exe beside the library; "
                             "name its folder with --tools DIR\n"}));
}

}  // namespace
}  // namespace test_support
