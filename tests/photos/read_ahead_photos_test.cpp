#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/runner/read_call.h"
#include "model/cache_filler.h"
#include "model/record_text.h"
#include "support/log_capture.h"
#include "support/photo_list.h"
#include "support/read_file.h"
#include "support/skip_or_fail.h"
#include "support/tool_directory.h"

/// Every real photo, whole and damaged, by our tool: read ahead and one by one.
namespace exiv2_wp {
namespace {

namespace fs = std::filesystem;

using internal::readExifMetadataFromCliCached;
using test_support::LogCapture;

class RealPhotosReadAhead : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_symlink(EXIV2_TOOL, folder.path() / "exiv2.exe");
        ASSERT_TRUE(initialize(folder.path()));
        log.clear();
    }

    // Copies of a photo: as it is, cut off at several places, and with bytes of another value.
    void addCopies(const fs::path& photo) {
        const std::string bytes = test_support::readFile(photo);
        const std::string name = photo.filename().string();
        files.push_back(folder.makeFile(name, bytes));
        for (const std::size_t size : {std::size_t{300}, std::size_t{4000}, bytes.size() / 2}) {
            files.push_back(folder.makeFile(std::to_string(size) + "-" + name,
                                            bytes.substr(0, std::min(size, bytes.size()))));
        }
        for (const std::size_t step : {std::size_t{37}, std::size_t{211}}) {
            std::string damaged = bytes;
            for (std::size_t at = 100; at < std::min(damaged.size(), std::size_t{20'000});
                 at += step) {
                damaged[at] = static_cast<char>(damaged[at] + 1);
            }
            files.push_back(folder.makeFile("step-" + std::to_string(step) + "-" + name, damaged));
        }
    }

    std::vector<std::string> recordTexts() const {
        std::vector<std::string> texts;
        for (const fs::path& file : files) {
            const auto record = readExifMetadataFromCliCached(file);
            texts.push_back(record == nullptr ? "none" : test_support::toText(*record));
        }
        return texts;
    }

    const test_support::TemporaryDirectory folder;
    LogCapture log;
    std::vector<fs::path> files;
};

TEST_F(RealPhotosReadAhead, HaveTheRecordsAndLogLinesOfTheOrdinaryRuns) {
    const std::vector<fs::path> photos = test_support::sampleFiles(PHOTOS);
    if (photos.front().empty()) {
        SKIP_OR_FAIL("no photos in " PHOTOS);
    }
    for (const fs::path& photo : photos) {
        files.clear();
        addCopies(photo);
        test_support::fillCache();
        log.clear();
        const std::vector<std::string> records = recordTexts();
        const auto lines = log.lines();
        test_support::fillCache();
        log.clear();
        EXPECT_EQ(readAhead(files), files.size());
        EXPECT_FALSE(internal::isReadCallRefused());
        EXPECT_EQ(log.lines(), lines);
        EXPECT_EQ(recordTexts(), records);
        EXPECT_EQ(log.lines(), lines);
    }
}

}  // namespace
}  // namespace exiv2_wp
