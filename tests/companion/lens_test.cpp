// SPDX-License-Identifier: GPL-2.0-or-later
#include <sys/stat.h>

#include "companion/companion_fixture.h"
#include "reader/commands.h"

namespace companion_tests {
namespace {

using test_support::Arguments;

namespace fs = std::filesystem;

constexpr const char* kLens = "EF24-70mm f/2.8L USM";
constexpr const char* kLensLine = "Lens name       : EF24-70mm f/2.8L USM\n";

class LensLine : public Companion {};

TEST_F(LensLine, StandsBeforeTheToolsSummary) {
    const std::string photo = makePhoto("photo.jpg", {.lens = kLens});
    real.answer({"pr"}, {.output = "File name       : x\n", .error = "err\n", .exitCode = 7});

    EXPECT_EQ(call({"pr", photo}),
              (ProgramEnd{7, std::string(kLensLine) + "File name       : x\n", "err\n"}));
    EXPECT_EQ(real.calls(), (std::vector<Arguments>{{"pr", photo}}));
}

TEST_F(LensLine, IsAlignedAsTheInstalledToolsLinesAre) {
    const std::string photo = makePhoto("photo.jpg", {.lens = kLens});

    const ProgramEnd own = runProgram(COMPANION, {"pr", photo});
    ProgramEnd expected = runProgram(REAL_EXIV2, {"pr", photo});

    EXPECT_EQ(expected.output.find(": "), std::string_view(kLensLine).find(": "));
    expected.output.insert(0, kLensLine);
    EXPECT_EQ(own, expected);
}

TEST_F(LensLine, IsMissingWhereTheLensIsUnknown) {
    real.answer({"pr"}, {.output = "summary\n", .exitCode = 3});
    for (const char* lens : {"", "n/a", "Unknown Lens (255)", "(183)"}) {
        const std::string photo = makePhoto("photo.jpg", {.lens = lens});
        EXPECT_EQ(call({"pr", photo}), (ProgramEnd{3, "summary\n", ""})) << lens;
    }
}

TEST_F(LensLine, IsMissingWhereTheFileCantBeRead) {
    real.answer({"pr"}, {.output = "summary\n"});
    (void)folder.makeFile("text.jpg", "no image");
    ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    for (const char* name : {"missing.jpg", "text.jpg", "pipe", "."}) {
        const ProgramEnd end = call({"pr", (folder.path() / name).native()});
        EXPECT_EQ(end.exitCode, 0) << name;
        EXPECT_EQ(end.output, "summary\n") << name;
    }
}

TEST_F(LensLine, AddsNothingToStandardError) {
    EXPECT_EQ(runProgram(COMPANION, {"pr", "missing.jpg"}),
              runProgram(REAL_EXIV2, {"pr", "missing.jpg"}));
}

TEST_F(LensLine, IsLeftOutWhenTheReaderDies) {
    fs::copy_file(COMPANION, folder.path() / "exiv2.exe");
    const fs::path reader = folder.makeFile("exiv2-companion-reader", "#!/bin/sh\nkill -SEGV $$\n");
    ::chmod(reader.c_str(), 0700);
    const std::string photo = makePhoto("photo.jpg", {.lens = kLens});

    EXPECT_EQ(runProgram(folder.path() / "exiv2.exe", {"pr", photo}),
              runProgram(REAL_EXIV2, {"pr", photo}));
}

TEST_F(LensLine, ComesOnceThroughACopyOfTheProgram) {
    fs::create_directory(folder.path() / "copy");
    fs::copy_file(COMPANION, folder.path() / "copy" / "exiv2");
    const std::string photo = makePhoto("photo.jpg", {.lens = kLens});
    const std::string path =
        (folder.path() / "copy").native() + ":" + fs::path(REAL_EXIV2).parent_path().native();

    EXPECT_EQ(runProgram(COMPANION, {"pr", photo}, {.environment = {{"PATH", path}}}),
              runProgram(COMPANION, {"pr", photo}));
}

struct KnownLensCase {
    const char* name;
    std::string printed;
    std::string lens;
};

class KnownLens : public ::testing::TestWithParam<KnownLensCase> {};

TEST_P(KnownLens, IsTheNameThatIsPrinted) {
    EXPECT_EQ(exiv2_companion::knownLens(GetParam().printed), GetParam().lens);
}

const KnownLensCase kCases[] = {
    {"Name", kLens, kLens},
    {"OuterBlanks", "  50mm F1.4 \t ", "50mm F1.4"},
    {"ControlCharacters", "50mm\nF1.4\r\x1b[1m\x7f", "50mm F1.4  [1m"},
    {"ZeroBytes", std::string("50mm\0\0", 6), "50mm"},
    {"OtherAlphabets", "\xd0\x93\xd0\xb5\xd0\xbb", "\xd0\x93\xd0\xb5\xd0\xbb"},
    {"UnknownInside", "Nikkor or unknown", "Nikkor or unknown"},
    {"Nothing", "", ""},
    {"Blanks", " \t", ""},
    {"Number", "183", ""},
    {"BracketedNumber", "(183)", ""},
    {"Bytes", "0 0 12 255", ""},
    {"Dashes", "----", ""},
    {"NotAvailable", "n/a", ""},
    {"None", "None", ""},
    {"Unknown", "Unknown", ""},
    {"UnknownWithNumber", "Unknown Lens (255)", ""},
    {"UnknownInSmallLetters", "unknown", ""},
};

INSTANTIATE_TEST_SUITE_P(Table, KnownLens, ::testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace companion_tests
