#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hostile/hostile_photo.h"
#include "support/current_directory.h"

/// Photos whose names and metadata look like what the library searches for, read through the real
/// exiv2.
namespace exiv2_wp {
namespace {

using HostileExiv2 = test_support::HostilePhoto;

// exiv2 prints line feeds of a value as they are, so a photo can add an entry that it doesn't have.
// Known: a photo can lie about itself without that, too.
TEST_F(HostileExiv2, ReadsALineInAValueAsAnEntry) {
    const auto photo = makePhoto("photo.jpg", {"-XMP-dc:Title=x\nExif.Photo.Added Ascii 3 yes"});
    EXPECT_EQ(readTag(photo, "Xmp.dc.title"), "lang=\"x-default\" x");
    EXPECT_EQ(readTag(photo, "Exif.Photo.Added"), "yes");
}

TEST_F(HostileExiv2, KeepsAnEntryThatALineInAValueRepeats) {
    const std::string make = readTag(makePhoto("clean.jpg"), "Exif.Image.Make");
    const auto photo = makePhoto("photo.jpg", {"-XMP-dc:Title=x\nExif.Image.Make Ascii 3 not"});
    EXPECT_EQ(make, "Canon");
    EXPECT_EQ(readTag(photo, "Exif.Image.Make"), make);
}

TEST_F(HostileExiv2, TakesNoXmpPropertyForAnExifTag) {
    const auto sidecar = makeSidecar("photo.xmp",
                                     "hostile:Exif.Photo.FNumber=\"9/1\" "
                                     "hostile:FocusDistanceLower=\"7\" hostile:x35mm=\"9\"");
    EXPECT_EQ(readTag(sidecar, "Exif.Photo.FNumber"), "none");
    EXPECT_EQ(readTag(sidecar, "Xmp.hostile.Exif.Photo.FNumber"), "9/1");
    EXPECT_EQ(summarize(sidecar).fNumber, -1.0F);
    SMetadataExiv focus;
    readExiv2Info(
        sidecar, "", "", [](const SLensInfo&) {},
        [&](const SMetadataExiv& metadata) { focus = metadata; }, [] {});
    EXPECT_EQ(focus.focusDistance, -1.0F);
    EXPECT_EQ(focus.focalLength35mm, -1.0F);
}

TEST_F(HostileExiv2, ReadsALensModelOfSixtyThousandBytes) {
    const auto photo = makePhoto("photo.jpg", {"-EXIF:LensModel=" + std::string(60'000, 'L')});
    EXPECT_EQ(summarize(photo).lensModel, std::string(60'000, 'L'));
}

TEST_F(HostileExiv2, ReadsALensModelOfAMegabyte) {
    const std::string model(1'000'000, 'L');
    const auto sidecar = makeSidecar("photo.xmp", "exifEX:LensModel=\"" + model + "\"");
    EXPECT_EQ(summarize(sidecar).lensModel, model);
}

TEST_F(HostileExiv2, ReadsTenThousandProperties) {
    std::string properties;
    for (int i = 0; i < 10'000; ++i) {
        const std::string number = std::to_string(i);
        properties += "hostile:p" + number + "=\"" + number + "\" ";
    }
    const ExivReader reader(makeSidecar("photo.xmp", properties).string());
    const auto found = reader.getXMPData();
    ASSERT_EQ(found.size(), 10'000U);
    EXPECT_EQ(found.front().name, "p0");
    EXPECT_EQ(found.back().name, "p9999");
    for (const auto& property : found) {
        ASSERT_EQ("p" + property.value, property.name);
    }
}

// No shell is asked, and the name is one argument, whatever it holds.
TEST_F(HostileExiv2, ReadsPhotosOfAnyName) {
    for (const char* const name :
         {"two words.jpg", "\"quoted\".jpg", "'quoted'.jpg", "$(touch made).jpg",
          "`touch made`.jpg", "a;touch made;.jpg", "a|b&c>made.jpg", "line\nfeed.jpg", "*.jpg",
          "\\.jpg", "\xFF.jpg", "-d.jpg", "--delete.jpg"}) {
        const auto photo = makePhoto(name);
        const auto before = snapshot();
        EXPECT_EQ(summarize(photo).cameraMaker, "Canon") << name;
        EXPECT_EQ(snapshot(), before) << name;
    }
}

// exiv2 takes what begins with a single dash for an option: such a file is not read, and stays as
// it is. A host that passes whole paths never meets this.
TEST_F(HostileExiv2, DoesNotReadARelativePathThatBeginsWithADash) {
    for (const char* const name : {"-d.jpg", "-Mset.jpg", "-rename.jpg"}) {
        (void)makePhoto(name);
        const auto before = snapshot();
        const test_support::CurrentDirectory inFolder(folder());
        EXPECT_EQ(summarize(name).cameraMaker, "") << name;
        EXPECT_EQ(snapshot(), before) << name;
    }
    EXPECT_EQ(log.linesOfType(3).size(), 3U);
}

}  // namespace
}  // namespace exiv2_wp
