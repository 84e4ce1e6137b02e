#include "exiv2_wrapper/api/preview_failures.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <unordered_set>

#include "exiv2_wrapper/model/cache_key.h"

namespace exiv2_wp::internal {
namespace {

namespace fs = std::filesystem;

// The key by its definition: a stream over the path's text that writes from its beginning.
std::string keyByStream(const fs::path& file, int firstSize, int secondSize) {
    std::stringstream key(makeCacheKey(file), std::ios::in | std::ios::out);
    key << firstSize << "x" << secondSize;
    return key.str();
}

TEST(PreviewKey, IsThePathWithItsBeginningOverwritten) {
    const fs::path file = fs::current_path() / "Photos" / "A Photo.JPG";
    const std::string path = makeCacheKey(file);
    EXPECT_EQ(makePreviewKey(file, 640, 480), "640x480" + path.substr(7));
}

TEST(PreviewKey, IsTheSizesAloneForAShortPath) {
    const fs::path root = fs::current_path().root_path();
    EXPECT_EQ(makePreviewKey(root, 2147483647, -1), "2147483647x-1");
}

TEST(PreviewKey, IsSharedByPathsThatDifferOnlyInTheirBeginning) {
    const fs::path root = fs::current_path().root_path();
    EXPECT_EQ(makePreviewKey(root / "ab/photo.jpg", 1024, 768),
              makePreviewKey(root / "cd/photo.jpg", 1024, 768));
    EXPECT_NE(makePreviewKey(root / "ab/photo.jpg", 1024, 768),
              makePreviewKey(root / "ab/photo.jpe", 1024, 768));
}

TEST(PreviewKey, IsWhatAStreamMakesOfRandomPathsAndSizes) {
    std::mt19937 random(6);
    const fs::path root = fs::current_path().root_path();
    for (int round = 0; round < 500; ++round) {
        const fs::path file = root / std::string(random() % 20, 'P');
        const int first = static_cast<int>(random()) >> (random() % 32);
        const int second = static_cast<int>(random()) >> (random() % 32);
        ASSERT_EQ(makePreviewKey(file, first, second), keyByStream(file, first, second));
    }
}

TEST(PreviewFailures, KnowWhatTheyWereTold) {
    PreviewFailures failures;
    failures.remember("a");
    failures.remember("a");
    EXPECT_TRUE(failures.contains("a"));
    EXPECT_FALSE(failures.contains("b"));
    EXPECT_EQ(failures.size(), 1U);
}

TEST(PreviewFailures, KeepAThousandAndThenForgetTwoHundred) {
    PreviewFailures failures;
    for (int i = 0; i < 1000; ++i) {
        failures.remember(std::to_string(i));
    }
    EXPECT_EQ(failures.size(), 1000U);
    failures.remember("one more");
    EXPECT_EQ(failures.size(), 801U);
    EXPECT_TRUE(failures.contains("one more"));
}

TEST(PreviewFailures, ForgetSomeEvenForAKeyThatIsKnown) {
    PreviewFailures failures;
    for (int i = 0; i < 1000; ++i) {
        failures.remember(std::to_string(i));
    }
    failures.remember("999");
    EXPECT_TRUE(failures.contains("999"));
    EXPECT_LE(failures.size(), 801U);
}

TEST(PreviewFailures, ForgetTheFirstOfTheirOwnOrder) {
    PreviewFailures failures;
    std::unordered_set<std::string> twin;
    for (int i = 0; i < 3000; ++i) {
        const std::string key = "key " + std::to_string(i);
        failures.remember(key);
        if (twin.size() >= 1000) {
            twin.erase(twin.begin(), std::next(twin.begin(), 200));
        }
        twin.insert(key);
    }
    for (int i = 0; i < 3000; ++i) {
        const std::string key = "key " + std::to_string(i);
        ASSERT_EQ(failures.contains(key), twin.contains(key)) << key;
    }
}

}  // namespace
}  // namespace exiv2_wp::internal
