#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

constexpr auto kProperties =
    "Exif.Image.Artist          Ascii     4  Ada\n"
    "Xmp.dc.format              XmpText  10  image/jpeg\n"
    "Xmp.dc.subject             XmpBag    2  lake, evening\n"
    "Xmp.mine.own               XmpText   1  x\n"
    "Xmp.xmpMM.History          XmpText   0\n";

class PhotoinfoXmp : public PhotoinfoTest {};

TEST_F(PhotoinfoXmp, ShowsThePropertiesByNamespace) {
    tool.answerMetadata(kProperties);
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(photoinfo({native("xmp"), photo.native()}),
              (ProgramResult{0,
                             shown(photo) + "\n"
                                            "  http://purl.org/dc/elements/1.1/\n"
                                            "    format            image/jpeg\n"
                                            "    subject           lake, evening\n"
                                            "  unknown namespace\n"
                                            "    own               x\n"
                                            "  http://ns.adobe.com/xap/1.0/mm/\n"
                                            "    History           (no value)\n",
                             ""}));
}

TEST_F(PhotoinfoXmp, WritesJson) {
    tool.answerMetadata(kProperties);
    const auto photo = tool.makeFile("photo.jpg");
    const auto property = [](const Json& space, const char* name, const char* value) {
        return Json{{"namespace", space}, {"name", name}, {"value", value}};
    };

    EXPECT_EQ(
        photoinfo({native("xmp"), photo.native(), native("--json")}),
        jsonOfOne(
            photo, "properties",
            Json::array({property("http://purl.org/dc/elements/1.1/", "format", "image/jpeg"),
                         property("http://purl.org/dc/elements/1.1/", "subject", "lake, evening"),
                         property(nullptr, "own", "x"),
                         property("http://ns.adobe.com/xap/1.0/mm/", "History", "")})));
}

TEST_F(PhotoinfoXmp, SaysThatThereAreNone) {
    tool.answerMetadata("Exif.Image.Artist  Ascii  4  Ada\n");
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(photoinfo({native("xmp"), photo.native()}),
              (ProgramResult{0, shown(photo) + "\n  no XMP properties\n", ""}));
}

}  // namespace
}  // namespace test_support
