#include "exiv2_wrapper/model/known_records.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <utility>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "model/cache_filler.h"
#include "support/current_directory.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::CurrentDirectory;
using test_support::LogCapture;
using test_support::native;
using test_support::ToolDirectory;

using Record = KnownRecords::Record;

Record makeRecord() {
    return std::make_shared<CliExifMetadata>();
}

TEST(KnownRecords, KnowNothingAtFirst) {
    EXPECT_EQ(KnownRecords().find(native("/photo.jpg")), std::nullopt);
}

TEST(KnownRecords, FindWhatTheyWereTold) {
    KnownRecords known;
    const Record record = makeRecord();
    known.remember(native("/photo.jpg"), record);
    EXPECT_EQ(known.find(native("/photo.jpg")), record);
    EXPECT_EQ(known.find(native("/Photo.jpg")), std::nullopt);
}

TEST(KnownRecords, TellAFailureFromNothing) {
    KnownRecords known;
    known.remember(native("/photo.jpg"), nullptr);
    EXPECT_EQ(known.find(native("/photo.jpg")), Record());
}

TEST(KnownRecords, FindWhatTheyWereToldLast) {
    KnownRecords known;
    const Record record = makeRecord();
    known.remember(native("/photo.jpg"), makeRecord());
    known.remember(native("/photo.jpg"), record);
    EXPECT_EQ(known.find(native("/photo.jpg")), record);
}

TEST(KnownRecords, ForgetWhatEveryThreadWasTold) {
    KnownRecords known;
    const auto remember = [&] { known.remember(native("/photo.jpg"), makeRecord()); };
    std::thread(remember).join();
    remember();
    known.forgetAll();
    EXPECT_EQ(known.find(native("/photo.jpg")), std::nullopt);
    std::thread([&] { EXPECT_EQ(known.find(native("/photo.jpg")), std::nullopt); }).join();
}

TEST(KnownRecords, KeepARecordAliveUntilTheyForgetIt) {
    KnownRecords known;
    Record record = makeRecord();
    const std::weak_ptr<const CliExifMetadata> observer = record;
    known.remember(native("/photo.jpg"), std::exchange(record, nullptr));
    EXPECT_FALSE(observer.expired());
    known.forgetAll();
    EXPECT_TRUE(observer.expired());
}

TEST(KnownRecords, LeaveARecordThatWasHandedOutToItsOwner) {
    KnownRecords known;
    known.remember(native("/photo.jpg"), makeRecord());
    const Record handedOut = known.find(native("/photo.jpg")).value();
    known.forgetAll();
    EXPECT_EQ(handedOut->fileKey, "");
}

TEST(KnownRecords, DoNotGrowWithoutEnd) {
    KnownRecords known;
    const auto path = [](int i) { return native("/" + std::to_string(i) + ".jpg"); };
    for (int i = 0; i < 1000; ++i) {
        known.remember(path(i), nullptr);
    }
    int found = 0;
    for (int i = 0; i < 1000; ++i) {
        found += known.find(path(i)) ? 1 : 0;
    }
    EXPECT_EQ(found, 200);
    EXPECT_TRUE(known.find(path(999)));
}

// ---- in front of the cache

class FileAskedForOften : public ::testing::Test {
protected:
    void SetUp() override {
        tool.answerMetadata("Exif.Image.Make Ascii 5 Maker\n");
        ASSERT_TRUE(initialize(tool.path()));
    }

    // More often than it takes to be known.
    static Record askOften(const std::filesystem::path& file) {
        for (int i = 0; i < 3; ++i) {
            (void)readExifMetadataFromCliCached(file);
        }
        return readExifMetadataFromCliCached(file);
    }

    LogCapture log;
    ToolDirectory tool;
};

TEST_F(FileAskedForOften, IsOneRecordForAllSpellings) {
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    const Record record = askOften(file);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(askOften(tool.path() / "." / "PHOTO.jpg"), record);
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 1U);
}

TEST_F(FileAskedForOften, IsOneRecordForAllThreads) {
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    const Record record = askOften(file);
    std::thread([&] { EXPECT_EQ(askOften(file), record); }).join();
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 1U);
}

TEST_F(FileAskedForOften, IsForgottenWithItsEntry) {
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    const Record record = askOften(file);
    test_support::fillCache();
    EXPECT_NE(askOften(file), record);
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 2U);
}

TEST_F(FileAskedForOften, IsAnotherFileInAnotherFolderWhenItsPathIsRelative) {
    const test_support::TemporaryDirectory other;
    const Record record = askOften(tool.makeFile("photo.jpg"));
    {
        const CurrentDirectory current(tool.path());
        EXPECT_EQ(askOften("photo.jpg"), record);
    }
    const CurrentDirectory current(other.path());
    EXPECT_NE(askOften("photo.jpg"), record);
}

}  // namespace
}  // namespace exiv2_wp::internal
