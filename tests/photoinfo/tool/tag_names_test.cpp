#include "photoinfo/tool/tag_names.h"

#include <gtest/gtest.h>

#include <string>

namespace photoinfo {
namespace {

struct TagNameCase {
    const char* name;
    const char* tag;
    bool isTag;
    bool isForSeveral;
    const char* bare;
};

class TagNames : public ::testing::TestWithParam<TagNameCase> {};

TEST_P(TagNames, AreToldFromWhatIsNone) {
    EXPECT_EQ(isTagName(GetParam().tag), GetParam().isTag);
}

TEST_P(TagNames, AreTakenApart) {
    EXPECT_EQ(standsForSeveralTags(GetParam().tag), GetParam().isForSeveral);
    EXPECT_EQ(bareTagName(GetParam().tag), GetParam().bare);
}

INSTANTIATE_TEST_SUITE_P(
    Of, TagNames,
    ::testing::Values(TagNameCase{"Plain", "Model", true, false, "Model"},
                      TagNameCase{"Group", "EXIF:Model", true, false, "Model"},
                      TagNameCase{"Groups", "EXIF:IFD0:Model", true, false, "Model"},
                      TagNameCase{"XmpGroup", "XMP-dc:Title-de", true, false, "Title-de"},
                      TagNameCase{"Number", "Orientation#", true, false, "Orientation"},
                      TagNameCase{"Hexadecimal", "Nikon_0x0002", true, false, "Nikon_0x0002"},
                      TagNameCase{"Wildcard", "GPS*", true, true, "GPS*"},
                      TagNameCase{"OneCharacter", "?odel", true, true, "?odel"},
                      TagNameCase{"All", "All", true, true, "All"},
                      TagNameCase{"AllOfAGroup", "EXIF:all", true, true, "all"},
                      TagNameCase{"Empty", "", false, false, ""},
                      TagNameCase{"GroupAlone", "EXIF:", false, false, ""},
                      TagNameCase{"NumberSignAlone", "#", false, false, ""},
                      TagNameCase{"NumberSignInside", "Mo#del", false, false, "Mo#del"},
                      TagNameCase{"Excluded", "-Model", false, false, "-Model"},
                      TagNameCase{"Assignment", "Artist=Ada", false, false, "Artist=Ada"},
                      TagNameCase{"Redirection", "Artist<Model", false, false, "Artist<Model"},
                      TagNameCase{"TwoWords", "Model Make", false, false, "Model Make"},
                      TagNameCase{"TwoLines", "Model\n-Make", false, false, "Model\n-Make"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(TagName, IsTheSameInAnyLetterCase) {
    EXPECT_TRUE(isSameTag("LensID", "lensid"));
    EXPECT_FALSE(isSameTag("LensID", "Lens"));
    EXPECT_FALSE(isSameTag("[", "{"));
}

}  // namespace
}  // namespace photoinfo
