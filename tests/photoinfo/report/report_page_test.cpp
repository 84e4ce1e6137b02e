#include "photoinfo/report/report_page.h"

#include <gtest/gtest.h>

#include <vector>

#include "photoinfo/report/base64.h"

namespace photoinfo {
namespace {

std::vector<unsigned char> bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

// The examples of RFC 4648.
TEST(Base64, FillsUpIncompleteGroups) {
    const std::vector<std::pair<const char*, const char*>> examples = {{"", ""},
                                                                       {"f", "Zg=="},
                                                                       {"fo", "Zm8="},
                                                                       {"foo", "Zm9v"},
                                                                       {"foob", "Zm9vYg=="},
                                                                       {"fooba", "Zm9vYmE="},
                                                                       {"foobar", "Zm9vYmFy"}};
    for (const auto& [text, expected] : examples) {
        EXPECT_EQ(toBase64(bytesOf(text)), expected) << text;
    }
}

TEST(Base64, HasADigitForEverySixBits) {
    const std::vector<unsigned char> bytes = {0x00, 0x10, 0x83, 0xFB, 0xFF, 0xBE, 0xFF, 0xFF};

    EXPECT_EQ(toBase64(bytes), "ABCD+/++//8=");
}

TEST(PreviewAddress, HoldsWhatABrowserShows) {
    EXPECT_EQ(previewAddress(bytesOf("\xFF\xD8\xFF\xE0")), "data:image/jpeg;base64,/9j/4A==");
    EXPECT_EQ(previewAddress(bytesOf("\x89PNG\r\n\x1A\n")), "data:image/png;base64,iVBORw0KGgo=");
}

TEST(PreviewAddress, IsEmptyForWhatABrowserDoesNotShow) {
    EXPECT_EQ(previewAddress(bytesOf("II*")), "");
    EXPECT_EQ(previewAddress(bytesOf("<svg onload='alert(1)'>")), "");
    EXPECT_EQ(previewAddress(bytesOf("\xFF\xD8")), "");
    EXPECT_EQ(previewAddress({}), "");
}

TEST(PreviewAddress, IsEmptyForAHugePreview) {
    std::vector<unsigned char> bytes(512 * 1024 + 1);
    bytes[0] = 0xFF;
    bytes[1] = 0xD8;
    bytes[2] = 0xFF;

    EXPECT_EQ(previewAddress(bytes), "");
    bytes.pop_back();
    EXPECT_NE(previewAddress(bytes), "");
}

TEST(ReportEntry, HasNoSentinels) {
    const Json entry = reportEntry({.file = "a.jpg", .error = "", .summary = {{}}}, "");

    for (const auto& [name, value] : entry.items()) {
        EXPECT_EQ(value, name == "file" ? Json("a.jpg") : Json()) << name;
    }
}

TEST(ReportPage, HasNoLessThanSignInItsData) {
    const std::string page = reportPage("</script>", Json::array({"<!--", "<script", "\xFF"}));

    EXPECT_NE(page.find("\"folder\":\"\\u003c/script>\",\"photos\":[\"\\u003c!--\",\"\\u003cscript"
                        "\",\"\\ufffd\"]}</script>"),
              std::string::npos);
}

// A folder of the mark's own name doesn't matter: it is put in after the mark was found.
TEST(ReportPage, PutsTheDataInOnce) {
    const std::string page = reportPage("{\"data\": \"here\"}", Json::array());

    EXPECT_EQ(page.find("{\"data\": \"here\"}"), std::string::npos);
}

TEST(ReportPage, AsksForNothingFromOutside) {
    const std::string page(reportTemplate());

    EXPECT_NE(page.find("default-src 'none'; img-src data:;"), std::string::npos);
    EXPECT_EQ(page.find("unsafe-inline"), std::string::npos);
    for (const char* const address : {" src=", " href=", "url(", "@import", "https://"}) {
        EXPECT_EQ(page.find(address), std::string::npos) << address;
    }
}

}  // namespace
}  // namespace photoinfo
