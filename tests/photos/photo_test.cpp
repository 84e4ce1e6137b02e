#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photos/independent_reading.h"
#include "photos/real_exiv2.h"
#include "support/exported_text.h"
#include "support/photo_list.h"
#include "support/skip_or_fail.h"
#include "support/tool_directory.h"

namespace exiv2_wp {
namespace {

namespace fs = std::filesystem;
using test_support::RealExiv2;
using test_support::toText;

// A text for each call back.
std::vector<std::string> summariesOf(const fs::path& file) {
    std::vector<std::string> summaries;
    createImageMetadata(file,
                        [&](const SExivMetadataInfo& info) { summaries.push_back(toText(info)); });
    return summaries;
}

class RealPhoto : public ::testing::TestWithParam<fs::path> {};

TEST_P(RealPhoto, IsSummedUpAsItsPrintOutSays) {
    if (GetParam().empty()) {
        SKIP_OR_FAIL("no photos in " PHOTOS);
    }
    const RealExiv2 tool;
    ASSERT_TRUE(initialize(tool.folder().path()));

    const std::string printAll = test_support::printedByExiv2("-PXEkycv -q", GetParam());

    ASSERT_NE(printAll, "");
    EXPECT_EQ(summariesOf(GetParam()),
              std::vector<std::string>{toText(test_support::readIndependently(printAll))});
}

INSTANTIATE_TEST_SUITE_P(Photos, RealPhoto, ::testing::ValuesIn(test_support::listFiles(PHOTOS)),
                         test_support::photoName);
INSTANTIATE_TEST_SUITE_P(Sample, RealPhoto, ::testing::Values(SAMPLE_PHOTO),
                         test_support::photoName);

class BadPhoto : public ::testing::Test {
protected:
    RealExiv2 tool;
    const std::vector<std::string> none = {};

    void SetUp() override { ASSERT_TRUE(initialize(tool.folder().path())); }
};

TEST_F(BadPhoto, HasNoSummaryWhenItIsMissing) {
    EXPECT_EQ(summariesOf(tool.folder().path() / "missing.jpg"), none);
    EXPECT_EQ(summariesOf({}), none);
}

TEST_F(BadPhoto, HasNoSummaryWhenItIsADirectory) {
    EXPECT_EQ(summariesOf(tool.folder().path()), none);
}

TEST_F(BadPhoto, HasNoSummaryWhenItIsEmptyOrNoPhoto) {
    EXPECT_EQ(summariesOf(tool.folder().makeFile("empty.jpg", "")), none);
    EXPECT_EQ(summariesOf(tool.folder().makeFile("text.jpg", "no photo at all")), none);
}

// The administrator may read what nobody may; but whoever opens its own memory as a file gets an
// error for the first byte.
TEST_F(BadPhoto, HasNoSummaryWhenItCannotBeRead) {
    const fs::path locked =
        tool.folder().makeFile("locked.jpg", test_support::readFile(SAMPLE_PHOTO));
    fs::permissions(locked, fs::perms::none);
    const bool isReadable = std::ifstream(locked).good();
    if (isReadable) {
        fs::remove(locked);
        fs::create_symlink("/proc/self/mem", locked);
    }

    EXPECT_EQ(summariesOf(locked), none);
}

TEST_F(BadPhoto, HasASummaryOfWhatSurvivedOrNoneWhenItIsCutOff) {
    const std::string whole = test_support::readFile(SAMPLE_PHOTO);
    ASSERT_GT(whole.size(), 1000U);
    for (const std::size_t size : {2UL, 20UL, 200UL, whole.size() / 2, whole.size() - 1}) {
        const fs::path cut =
            tool.folder().makeFile("cut-" + std::to_string(size) + ".jpg", whole.substr(0, size));
        EXPECT_LE(summariesOf(cut).size(), 1U) << size;
        EXPECT_EQ(test_support::readFile(cut), whole.substr(0, size)) << size;
    }
}

TEST_F(BadPhoto, HasADefinedResultWhenItsMetadataIsDamaged) {
    std::string bytes = test_support::readFile(SAMPLE_PHOTO);
    for (std::size_t at = 30; at < 1000; at += 7) {
        bytes[at] = static_cast<char>(at);
    }
    EXPECT_LE(summariesOf(tool.folder().makeFile("damaged.jpg", bytes)).size(), 1U);
}

}  // namespace
}  // namespace exiv2_wp
