#include "exiv2_wrapper/model/record_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// A program of its own, since the table is one for the whole process.
namespace exiv2_wp::internal {
namespace {

constexpr std::size_t kCapacity = 200;
constexpr std::size_t kLeft = 161;  // when the 201st has come

class RecordTable : public ::testing::Test {
protected:
    // Fills the table with keys that it doesn't know, to the moment at which some have just gone.
    void SetUp() override {
        addMany(kCapacity);
        for (std::size_t before = 0; countKept() > before;) {
            before = countKept();
            addMany(1);
        }
        keys.erase(keys.begin(), keys.end() - kLeft);
        ASSERT_EQ(countKept(), kLeft);
    }

    std::string newKey() {
        static int number = 0;
        return "key " + std::to_string(++number);
    }

    void addMany(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            keys.push_back(newKey());
            getOrCreateEntry(keys.back()).guard.value().deliver(nullptr);
        }
    }

    static bool isKept(const std::string& key) { return countKnown({key}) == 1; }

    [[nodiscard]] std::size_t countKept() const {
        return static_cast<std::size_t>(std::count_if(keys.begin(), keys.end(), isKept));
    }

    std::vector<std::string> keys;  // in the order in which they came
};

TEST_F(RecordTable, HoldsTwoHundredAndLosesTheFortyOldest) {
    addMany(kCapacity - kLeft);
    EXPECT_EQ(countKept(), kCapacity);
    addMany(1);
    EXPECT_EQ(countKept(), kLeft);
    EXPECT_TRUE(std::all_of(keys.begin() + 40, keys.end(), isKept));
}

TEST_F(RecordTable, GivesOneReadingToAllWhoAsk) {
    const std::string key = newKey();
    CacheEntry first = getOrCreateEntry(key);
    const CacheEntry second = getOrCreateEntry(key);
    ASSERT_TRUE(first.guard);
    EXPECT_FALSE(second.guard);
    const auto record = std::make_shared<const CliExifMetadata>();
    EXPECT_EQ(first.guard->deliver(record), record);
    EXPECT_EQ(second.record.get(), record);
}

TEST_F(RecordTable, CountsAReadingAsKnownOnceItIsDelivered) {
    const std::string key = newKey();
    CacheEntry entry = getOrCreateEntry(key);
    EXPECT_FALSE(isSettled(entry.record));
    EXPECT_EQ(countKnown({keys.back(), key, keys.back()}), 1U);
    (void)entry.guard->deliver(nullptr);
    EXPECT_TRUE(isSettled(entry.record));
    EXPECT_EQ(countKnown({keys.back(), key, keys.back()}), 3U);
}

TEST_F(RecordTable, GivesNullToThoseWhoWaitForAnAbandonedReadingAndForgetsIt) {
    const std::string key = newKey();
    std::optional<CacheEntry> reading = getOrCreateEntry(key);
    const SharedRecord waiting = getOrCreateEntry(key).record;
    reading.reset();
    EXPECT_TRUE(isSettled(waiting));
    EXPECT_EQ(waiting.get(), nullptr);
    EXPECT_TRUE(getOrCreateEntry(key).guard);
}

// As often as it takes for a place that was kept to become the oldest.
TEST_F(RecordTable, KeepsNoPlaceForAnAbandonedReading) {
    for (std::size_t i = 0; i < kCapacity; ++i) {
        (void)getOrCreateEntry(newKey());
    }
    EXPECT_EQ(countKept(), kLeft);
    for (int round = 0; round < 5; ++round) {
        addMany(kCapacity - kLeft + 1);
        EXPECT_EQ(countKept(), kLeft);
    }
}

TEST_F(RecordTable, LosesNoOtherWhenAReadingIsAbandonedThatIsGoneAlready) {
    std::optional<CacheEntry> reading = getOrCreateEntry(newKey());
    addMany(2 * kCapacity);
    const std::size_t before = countKept();
    reading.reset();
    EXPECT_EQ(countKept(), before);
    addMany(kCapacity);
    EXPECT_EQ(countKept(), before);
}

// ---- beside others

class RecordTableThatIsFull : public RecordTable {
protected:
    void SetUp() override {
        RecordTable::SetUp();
        addMany(kCapacity - kLeft);
    }
};

TEST_F(RecordTableThatIsFull, LosesNoneOfTheFortyOldestWhenOneOfThemIsToBeKept) {
    EXPECT_FALSE(getOrCreateEntryBeside({keys[0]}, newKey()));
    EXPECT_FALSE(getOrCreateEntryBeside({keys[39]}, newKey()));
    EXPECT_EQ(countKept(), kCapacity);
}

TEST_F(RecordTableThatIsFull, LosesTheFortyOldestWhenOthersAreToBeKept) {
    EXPECT_TRUE(getOrCreateEntryBeside({keys[40], keys[199]}, newKey()));
    EXPECT_EQ(countKept(), kCapacity - 40);
}

TEST_F(RecordTableThatIsFull, GivesWhatItHoldsBesideEveryOther) {
    EXPECT_TRUE(getOrCreateEntryBeside({keys[0]}, keys[1]));
    EXPECT_EQ(countKept(), kCapacity);
}

TEST_F(RecordTable, TakesANewKeyBesideTheOldestWhileThereIsRoom) {
    EXPECT_TRUE(getOrCreateEntryBeside({keys[0]}, newKey()));
    EXPECT_EQ(countKept(), kLeft);
}

}  // namespace
}  // namespace exiv2_wp::internal
