#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

/// The commands that need no tool get none.
class PhotoinfoNames : public PhotoinfoProgramTest {};

TEST_F(PhotoinfoNames, TellTheCropFactorOfACamera) {
    EXPECT_EQ(run({native("crop-factor"), native("Canon"), native("EOS 7D")}),
              (ProgramResult{0, "  Crop factor         1.61\n", ""}));
}

TEST_F(PhotoinfoNames, TellTheCropFactorInJson) {
    const Json expected = {{"make", "Canon"}, {"model", "EOS 7D"}, {"cropFactor", 1.61}};

    EXPECT_EQ(run({native("crop-factor"), native("Canon"), native("EOS 7D"), native("--json")}),
              (ProgramResult{0, expected.dump(2) + "\n", ""}));
}

TEST_F(PhotoinfoNames, TakeAnUnknownCameraForFullFrame) {
    EXPECT_EQ(run({native("crop-factor"), native("Nobody"), native("None")}),
              (ProgramResult{0, "  Crop factor         1\n", ""}));
}

TEST_F(PhotoinfoNames, BringANameIntoBothForms) {
    EXPECT_EQ(run({native("canonical"), native("Canon EF-S 18/55")}),
              (ProgramResult{0,
                             "  As a camera         canonef-s1855\n"
                             "  As a lens           canonefs1855\n",
                             ""}));
}

TEST_F(PhotoinfoNames, BringANameIntoBothFormsInJson) {
    const Json expected = {{"name", "EF-S \x1B"}, {"camera", "ef-s\x1B"}, {"lens", "efs\x1B"}};

    EXPECT_EQ(run({native("canonical"), native("EF-S \x1B"), native("--json")}),
              (ProgramResult{0, expected.dump(2, ' ', true) + "\n", ""}));
}

TEST_F(PhotoinfoNames, NeedBothPartsOfACamera) {
    EXPECT_EQ(run({native("crop-factor"), native("Canon")}),
              (ProgramResult{2, "", "photoinfo: MODEL is required; --help tells more\n"}));
}

}  // namespace
}  // namespace test_support
