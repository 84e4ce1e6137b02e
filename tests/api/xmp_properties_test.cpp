#include "exiv2_wrapper/api/xmp_properties.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <vector>

#include "exiv2_wrapper/api/xmp_namespaces.h"
#include "exiv2_wrapper/model/print_all_parser.h"

namespace exiv2_wp {

bool operator==(const ExivReader::XMPData& a, const ExivReader::XMPData& b) {
    return a.ns == b.ns && a.name == b.name && a.value == b.value;
}

void PrintTo(const ExivReader::XMPData& data, std::ostream* stream) {
    *stream << "{" << data.ns << ", " << data.name << ", " << data.value << "}";
}

namespace {

using Properties = std::vector<ExivReader::XMPData>;

Properties propertiesIn(const std::string& printAll) {
    internal::CliExifMetadata record;
    EXPECT_TRUE(internal::parsePrintAllOutput(printAll, record));
    return internal::xmpPropertiesOf(record);
}

struct Namespace {
    const char* prefix;
    const char* uri;
};

void PrintTo(const Namespace& row, std::ostream* stream) {
    *stream << row.prefix;
}

constexpr std::array<Namespace, 21> kNamespaces = {{
    {"aux", "http://ns.adobe.com/exif/1.0/aux/"},
    {"cc", "http://creativecommons.org/ns#"},
    {"crs", "http://ns.adobe.com/camera-raw-settings/1.0/"},
    {"dc", "http://purl.org/dc/elements/1.1/"},
    {"exif", "http://ns.adobe.com/exif/1.0/"},
    {"exifEX", "http://cipa.jp/exif/1.0/"},
    {"Iptc4xmpCore", "http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/"},
    {"Iptc4xmpExt", "http://iptc.org/std/Iptc4xmpExt/2008-02-29/"},
    {"iptcCore", "http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/"},
    {"iptcExt", "http://iptc.org/std/Iptc4xmpExt/2008-02-29/"},
    {"lr", "http://ns.adobe.com/lightroom/1.0/"},
    {"pdf", "http://ns.adobe.com/pdf/1.3/"},
    {"photoshop", "http://ns.adobe.com/photoshop/1.0/"},
    {"plus", "http://ns.useplus.org/ldf/xmp/1.0/"},
    {"rdf", "http://www.w3.org/1999/02/22-rdf-syntax-ns#"},
    {"tiff", "http://ns.adobe.com/tiff/1.0/"},
    {"x", "adobe:ns:meta/"},
    {"xmp", "http://ns.adobe.com/xap/1.0/"},
    {"xmpBJ", "http://ns.adobe.com/xap/1.0/bj/"},
    {"xmpMM", "http://ns.adobe.com/xap/1.0/mm/"},
    {"xmpRights", "http://ns.adobe.com/xap/1.0/rights/"},
}};

class XmpNamespaces : public ::testing::TestWithParam<Namespace> {};

TEST_P(XmpNamespaces, HaveTheirUris) {
    EXPECT_EQ(internal::xmpNamespaceOf(GetParam().prefix), GetParam().uri);
}

INSTANTIATE_TEST_SUITE_P(, XmpNamespaces, ::testing::ValuesIn(kNamespaces),
                         [](const auto& row) { return row.param.prefix; });

TEST(XmpNamespace, OfAnUnknownPrefixIsEmpty) {
    for (const char* const prefix : {"", "a", "DC", "dcx", "xmpS", "zzz"}) {
        EXPECT_EQ(internal::xmpNamespaceOf(prefix), "") << prefix;
    }
}

TEST(XmpProperties, OfAnEmptyRecordAreNone) {
    EXPECT_EQ(propertiesIn(""), Properties());
}

TEST(XmpProperties, HaveNamespaceNameAndValue) {
    EXPECT_EQ(propertiesIn("Xmp.dc.subject XmpBag 2 sea, sky\n"),
              (Properties{{"http://purl.org/dc/elements/1.1/", "subject", "sea, sky"}}));
}

TEST(XmpProperties, KeepTheRestOfThePathInTheName) {
    EXPECT_EQ(
        propertiesIn("Xmp.xmpMM.History[1]/stEvt:action XmpText 5 saved\n"
                     "Xmp.dc.a.b. XmpText 1 x\n"),
        (Properties{{"http://purl.org/dc/elements/1.1/", "a.b.", "x"},
                    {"http://ns.adobe.com/xap/1.0/mm/", "History[1]/stEvt:action", "saved"}}));
}

TEST(XmpProperties, OfAnUnknownPrefixHaveNoNamespace) {
    EXPECT_EQ(propertiesIn("Xmp.foo.bar XmpText 1 x\n"), (Properties{{"", "bar", "x"}}));
}

TEST(XmpProperties, WithoutPrefixOrNameAreLeftOut) {
    EXPECT_EQ(propertiesIn("Xmp.dc XmpText 1 a\n"
                           "Xmp. XmpText 1 b\n"
                           "Xmp..name XmpText 1 c\n"
                           "Xmp.dc. XmpText 1 d\n"),
              Properties());
}

TEST(XmpProperties, ComeBehindThoseThatAreLeftOutToo) {
    EXPECT_EQ(propertiesIn("Xmp..name XmpText 1 a\n"
                           "Xmp.dc. XmpText 1 b\n"
                           "Xmp.dc.title XmpText 1 c\n"),
              (Properties{{"http://purl.org/dc/elements/1.1/", "title", "c"}}));
}

TEST(XmpProperties, LeaveOtherKeysOut) {
    EXPECT_EQ(propertiesIn("Exif.Image.Make Ascii 6 Canon\n"
                           "xmp.dc.title XmpText 1 a\n"
                           "Exif.Xmp.dc.title XmpText 1 b\n"),
              Properties());
}

// Upper case comes before lower case, and bytes above 0x7F come last.
TEST(XmpProperties, AreSortedByTheBytesOfTheirKeys) {
    EXPECT_EQ(propertiesIn("Xmp.foo.b XmpText 1 3\n"
                           "Xmp.foo.\xC3\xA4 XmpText 1 5\n"
                           "Xmp.foo.bb XmpText 1 4\n"
                           "Xmp.foo.Z XmpText 1 2\n"
                           "Xmp.Foo.z XmpText 1 1\n"),
              (Properties{{"", "z", "1"},
                          {"", "Z", "2"},
                          {"", "b", "3"},
                          {"", "bb", "4"},
                          {"", "\xC3\xA4", "5"}}));
}

}  // namespace
}  // namespace exiv2_wp
