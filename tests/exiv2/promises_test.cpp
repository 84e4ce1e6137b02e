// SPDX-License-Identifier: GPL-2.0-or-later
#include <cmath>
#include <optional>

#include "exiv2/photo.h"
#include "exiv2/tool_fixture.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/every_nth.h"
#include "support/read_file.h"
#include "support/skip_or_fail.h"

// What the library promises of its tool, asked through its own interface.

namespace exiv2_tool {
namespace {

namespace fs = std::filesystem;

class Promises : public ToolTest {
protected:
    void SetUp() override { ASSERT_TRUE(exiv2_wp::initialize(fs::path(EXIV2_TOOL).parent_path())); }

    /// A copy of a file, one of its own to the library.
    [[nodiscard]] fs::path copyOf(const fs::path& file, std::string_view name) const {
        return folder.makeFile(name, test_support::readFile(file));
    }

    [[nodiscard]] static exiv2_wp::SLensInfo lensOf(const fs::path& photo) {
        exiv2_wp::SLensInfo lens;
        exiv2_wp::readExiv2Info(
            photo, "", "", [&](const exiv2_wp::SLensInfo& info) { lens = info; }, [](auto&&...) {},
            [] {});
        return lens;
    }

    /// None when the library has none.
    [[nodiscard]] static std::optional<std::string> bytesOf(const exiv2_wp::ExivReader& reader,
                                                            const std::string& key) {
        std::int32_t size = 0;
        unsigned char* data = nullptr;
        if (!reader.getRawExifTag(key.c_str(), &size, &data)) {
            return std::nullopt;
        }
        std::string bytes(data, data + size);
        ::operator delete(data);
        return bytes;
    }
};

struct LensCase {
    const char* photo;
    const char* lens;
    float metres;
};

class PromisesOfLenses : public Promises, public ::testing::WithParamInterface<LensCase> {};

TEST_P(PromisesOfLenses, NameAndDistanceAreTrue) {
    const fs::path photo = fs::path(PHOTOS) / GetParam().photo;
    if (!fs::exists(photo)) {
        SKIP_OR_FAIL("no " + photo.string());
    }
    const exiv2_wp::SLensInfo lens = lensOf(photo);

    EXPECT_EQ(lens.lensName, GetParam().lens);
    EXPECT_NEAR(lens.subjectDistance, GetParam().metres, 1e-6F * std::abs(GetParam().metres));
}

const LensCase kLenses[] = {
    {"32-lens_data.jpeg", "Nikon AF-S Nikkor 28-300mm f/3.5-5.6G ED VR", 29.85F},
    {"Nikon.nef", "Nikon AF-S DX Zoom-Nikkor 18-70mm f/3.5-4.5G IF-ED", 2.37F},
    {"NikonD2Hs.jpg", "Nikon AF Nikkor 50mm f/1.8D", 0.71F},
    {"Pentax.jpg", "Sigma AF 10-20mm F4-5.6 EX DC", -1.0F},
    {"Casio.jpg", "", 2.5F},
    {"Olympus2.jpg", "", 385.8F},
    {"canon-ixus.jpg", "", 3.75F},
    {"Canon.jpg", "", 10000.0F},
    {"Canon1DmkIII.jpg", "", -1.0F},
    {SAMPLE, "EF24-105mm f/4L IS USM", 120.0F},
};

INSTANTIATE_TEST_SUITE_P(Table, PromisesOfLenses, ::testing::ValuesIn(kLenses));

TEST_F(Promises, BytesAreThoseOfTheTag) {
    const exiv2_wp::ExivReader reader(SAMPLE);

    EXPECT_EQ(bytesOf(reader, "Exif.Photo.FNumber"), std::string("\0\0\0\x8\0\0\0\1", 8));

    const Photo photo(fs::path(SAMPLE).c_str());
    int position = 0;
    for (const Exiv2::Exifdatum& tag : photo.image().exifData()) {
        if (position++ % test_support::kEveryNthRun != 0) {
            continue;
        }
        std::string bytes(static_cast<std::size_t>(tag.size()), '\0');
        void* const data = bytes.data();
        tag.copy(static_cast<Exiv2::byte*>(data), photo.image().byteOrder());
        EXPECT_EQ(bytesOf(reader, tag.key()), bytes) << tag.key();
    }
}

TEST_F(Promises, PreviewsAreFound) {
    const fs::path photo =
        makePhoto("photo.jpg", {.thumbnail = makeJpeg({160, 120}), .larger = makeJpeg({480, 640})});
    std::string bytes;
    exiv2_wp::TopBottomOffset offset;

    EXPECT_TRUE(exiv2_wp::readExiv2Thumbnail(
        photo, "", 300, 200, offset, [](auto&&...) {}, [](int) {},
        [&](const unsigned char* data, std::uint64_t size, auto&&...) {
            bytes.assign(data, data + size);
            return true;
        },
        [](auto&&...) { return false; }));

    const Bytes expected = makeJpeg({480, 640});
    EXPECT_EQ(bytes, std::string(expected.begin(), expected.end()));
}

TEST_F(Promises, PhotosMayHaveAnyName) {
    for (const std::string_view name :
         {"\xd1\x84\xd0\xbe\xd1\x82\xd0\xbe.jpg", "\xe5\x86\x99\xe7\x9c\x9f.jpg",
          "\xf0\x9f\x93\xb7 gr\xc3\xbc\xc3\x9f.jpg"}) {
        std::string model;
        exiv2_wp::createImageMetadata(
            copyOf(SAMPLE, name),
            [&](const exiv2_wp::SExivMetadataInfo& info) { model = info.cameraModel; });
        EXPECT_EQ(model, "Canon EOS 6D") << name;
    }
}

}  // namespace
}  // namespace exiv2_tool
