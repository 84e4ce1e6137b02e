#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"

namespace exiv2_wp {
namespace {

std::string cameraForm(std::string name) {
    CamerasProfiles_canonizeName(name);
    return name;
}

std::string lensForm(std::string name) {
    ImageLens_canonizeName(name);
    return name;
}

// The rules word by word: one scan of the whole text for each of them.
void drop(std::string& name, char dropped) {
    name.erase(std::remove(name.begin(), name.end(), dropped), name.end());
}

std::string cameraFormByScans(std::string name) {
    for (char& c : name) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    drop(name, ' ');
    drop(name, '"');
    drop(name, '/');
    return name;
}

std::string lensFormByScans(const std::string& name) {
    std::string form = cameraFormByScans(name);
    drop(form, '-');
    drop(form, '/');
    return form;
}

std::string everyByte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

TEST(CanonicalNames, CameraKeepsTheHyphen) {
    EXPECT_EQ(cameraForm("Canon EOS-5D Mark/IV"), "canoneos-5dmarkiv");
}

TEST(CanonicalNames, LensDropsTheHyphen) {
    EXPECT_EQ(lensForm("Canon EOS-5D Mark/IV"), "canoneos5dmarkiv");
}

TEST(CanonicalNames, DoubleQuotesAreDropped) {
    EXPECT_EQ(cameraForm("\"EF\" 50\""), "ef50");
    EXPECT_EQ(lensForm("\"EF\" 50\""), "ef50");
}

TEST(CanonicalNames, TabsAndNoBreakSpacesAreKept) {
    EXPECT_EQ(cameraForm("A\tB\xC2\xA0"), "a\tb\xC2\xA0");
    EXPECT_EQ(lensForm("A\tB\xC2\xA0"), "a\tb\xC2\xA0");
}

TEST(CanonicalNames, AnEmptyNameStaysEmpty) {
    EXPECT_EQ(cameraForm(""), "");
    EXPECT_EQ(lensForm(""), "");
}

TEST(CanonicalNames, EveryByteIsTreatedAsTheRulesSay) {
    EXPECT_EQ(cameraForm(everyByte()), cameraFormByScans(everyByte()));
    EXPECT_EQ(lensForm(everyByte()), lensFormByScans(everyByte()));
}

TEST(CanonicalNames, RandomNamesComeOutAsByTheScans) {
    constexpr std::string_view kAlphabet = "aZ9 \"/-\xC3\x84\t";
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string name(random() % 40, '\0');
        std::generate(name.begin(), name.end(),
                      [&] { return kAlphabet[random() % kAlphabet.size()]; });
        ASSERT_EQ(cameraForm(name), cameraFormByScans(name));
        ASSERT_EQ(lensForm(name), lensFormByScans(name));
    }
}

TEST(CanonicalNames, AFormIsItsOwnForm) {
    const std::string name = "Sigma 18-35mm f/1.8 DC \"Art\"";
    EXPECT_EQ(cameraForm(cameraForm(name)), cameraForm(name));
    EXPECT_EQ(lensForm(lensForm(name)), lensForm(name));
}

}  // namespace
}  // namespace exiv2_wp
