#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photos/decoded_image.h"
#include "photos/real_exiv2.h"
#include "support/photo_list.h"
#include "support/skip_or_fail.h"

// Previews of real photos, extracted through our exiv2.exe, against what the stock one
// extracts into files.

namespace exiv2_wp {
namespace {

namespace fs = std::filesystem;
using test_support::ImageSize;
using test_support::readFile;

// A preview that holds an image.
struct Preview {
    ImageSize size;
    std::string bytes;
};

// What the library handed over.
struct HandedOver {
    ImageSize size;
    int sizeAskedFor = 0;
    std::string bytes;
};

class PhotoPreviews : public ::testing::TestWithParam<fs::path> {
protected:
    void SetUp() override {
        if (GetParam().empty()) {
            SKIP_OR_FAIL("no photos in " PHOTOS);
        }
        ASSERT_TRUE(initialize(fs::path(EXIV2_TOOL).parent_path()));
        photo = photoFolder_.path() / GetParam().filename();
        fs::copy_file(GetParam(), photo);
        fs::create_directory(extracted_);
        const std::string command = std::string(EXIV2) + " -f -ep -l '" + extracted_.string() +
                                    "' '" + GetParam().string() + "' 2>/dev/null";
        static_cast<void>(std::system(command.c_str()));
        for (const auto& file : fs::directory_iterator(extracted_)) {
            if (const std::optional<ImageSize> size = test_support::decodedSize(file.path())) {
                previews.push_back({*size, readFile(file.path())});
            }
        }
    }

    // None when the library finds no preview.
    [[nodiscard]] std::optional<HandedOver> extract(int size) const {
        HandedOver result;
        TopBottomOffset offset;
        const bool isRead = readExiv2Thumbnail(
            photo, "", size, size / 2, offset,
            [&](int width, int height, int askedFor) {
                result.size = {width, height};
                result.sizeAskedFor = askedFor;
            },
            [](int) {},
            [&](const unsigned char* bytes, std::uint64_t count, const TopBottomOffset&) {
                result.bytes.assign(bytes, bytes + count);
                return true;
            },
            [](auto&&...) { return false; });
        return isRead ? std::optional(result) : std::nullopt;
    }

    [[nodiscard]] fs::path keep(const std::string& bytes) const {
        return folder_.makeFile("payload", bytes);
    }

    fs::path photo;  // a copy, alone in its folder
    std::vector<Preview> previews;

    [[nodiscard]] fs::path folderOfPhoto() const { return photoFolder_.path(); }

private:
    test_support::TemporaryDirectory folder_;
    test_support::TemporaryDirectory photoFolder_;
    fs::path extracted_ = folder_.path() / "extracted";
};

// The smallest preview that is large enough by its longer side, else the largest.
const Preview& bestFor(int size, const std::vector<Preview>& previews) {
    const auto side = [](const Preview& preview) {
        return std::max(preview.size.width, preview.size.height);
    };
    const Preview* best = &previews.front();
    for (const Preview& preview : previews) {
        const bool isLargeEnough = side(*best) >= size;
        if (isLargeEnough ? side(preview) >= size && side(preview) < side(*best)
                          : side(preview) > side(*best)) {
            best = &preview;
        }
    }
    return *best;
}

TEST_P(PhotoPreviews, AreTheImagesThatTheToolExtracts) {
    for (const int size : {1, 100, 160, 10000}) {
        const std::optional<HandedOver> preview = extract(size);
        ASSERT_EQ(preview.has_value(), !previews.empty()) << size;
        if (preview) {
            EXPECT_TRUE(preview->bytes == bestFor(size, previews).bytes) << size;
            EXPECT_EQ(preview->sizeAskedFor, size);
        }
    }
}

TEST_P(PhotoPreviews, DecodeToTheAnnouncedSize) {
    for (const int size : {1, 10000}) {
        if (const std::optional<HandedOver> preview = extract(size)) {
            EXPECT_EQ(test_support::decodedSize(keep(preview->bytes)), preview->size) << size;
        }
    }
}

TEST_P(PhotoPreviews, LeaveThePhotoAndItsFolderAlone) {
    const std::string before = test_support::listing(folderOfPhoto());
    const std::string bytes = readFile(photo);
    static_cast<void>(extract(1));
    static_cast<void>(extract(10000));
    EXPECT_EQ(test_support::listing(folderOfPhoto()), before);
    EXPECT_TRUE(readFile(photo) == bytes);
}

INSTANTIATE_TEST_SUITE_P(Photos, PhotoPreviews,
                         ::testing::ValuesIn(test_support::sampleFiles(PHOTOS)),
                         test_support::photoName);
INSTANTIATE_TEST_SUITE_P(Sample, PhotoPreviews, ::testing::Values(SAMPLE_PHOTO),
                         test_support::photoName);

// So that the tests above don't pass for want of previews.
TEST(Photos, GiveFifteenPreviewsAtLeast) {
    if (test_support::listFiles(PHOTOS).front().empty()) {
        SKIP_OR_FAIL("no photos in " PHOTOS);
    }
    ASSERT_TRUE(initialize(fs::path(EXIV2_TOOL).parent_path()));
    int photosWithPreview = 0;
    for (const fs::path& photo : test_support::listFiles(PHOTOS)) {
        TopBottomOffset offset;
        photosWithPreview += readExiv2Thumbnail(
            photo, "", 1, 1, offset, [](auto&&...) {}, [](int) {}, [](auto&&...) { return true; },
            [](auto&&...) { return true; });
    }
    EXPECT_GE(photosWithPreview, 15);
}

}  // namespace
}  // namespace exiv2_wp
