#include "exiv2_wrapper/model/cache_key.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/text/path_text.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {
namespace {

TEST(CacheKey, KeepsLettersBeyondAsciiAsTheyAre) {
    const std::string upper = makeCacheKey(u8"B\u00C4R.JPG");
    const std::string lower = makeCacheKey(u8"b\u00E4r.jpg");
    EXPECT_NE(upper, lower);
    EXPECT_TRUE(upper.ends_with("b\xC3\x84r.jpg"));
}

TEST(CacheKey, OfNothingIsEmpty) {
    EXPECT_EQ(makeCacheKey({}), "");
}

// ---- the short way for plain paths

// The rule word by word, for every path alike.
std::string literalKey(const std::filesystem::path& file) {
    const std::filesystem::path full = fullPath(file);
    return lowerCased(utf8Path(full.lexically_normal().make_preferred()));
}

NativeString currentFolder() {
    return std::filesystem::current_path().native();
}

// Every path of up to four pieces behind a beginning; the pieces are what paths are made of, whole
// and broken.
std::vector<NativeString> pathsBehind(const NativeString& beginning) {
    const std::filesystem::path pieces[] = {"/",     "\\", ".", "..", " ",       "a",
                                            "B.JPG", "C:", "?", "~1", u8"\u00C4"};
    constexpr int kMostPieces = 4;
    std::vector<NativeString> paths = {beginning};
    std::size_t begin = 0;
    for (int i = 0; i < kMostPieces; ++i) {
        const std::size_t end = paths.size();
        for (; begin < end; ++begin) {
            for (const std::filesystem::path& piece : pieces) {
                paths.push_back(paths[begin] + piece.native());
            }
        }
    }
    return paths;
}

std::optional<std::string> keyOfPlain(const std::filesystem::path& path) {
    return keyOfPlainPath(std::filesystem::path(path).make_preferred().native());
}

std::string preferred(const std::filesystem::path& path) {
    return std::filesystem::path(path).make_preferred().string();
}

TEST(PlainPath, HasItsKeyWithoutBeingTakenToPieces) {
    EXPECT_EQ(keyOfPlain("/Photos 1/b.c/IMG_1.JPG"), preferred("/photos 1/b.c/img_1.jpg"));
    EXPECT_EQ(keyOfPlain("//server/Photos"), std::nullopt);
    EXPECT_EQ(keyOfPlain("/"), preferred("/"));
    EXPECT_EQ(keyOfPlain("/a/"), preferred("/a/"));
}

TEST(PlainPath, IsNoneWithANameThatBeginsWithADot) {
    EXPECT_EQ(keyOfPlain("/photos/../a.jpg"), std::nullopt);
    EXPECT_EQ(keyOfPlain("/photos/.hidden"), std::nullopt);
    EXPECT_EQ(keyOfPlain("./a.jpg"), std::nullopt);
}

TEST(PlainPath, IsNoneWithAnEmptyName) {
    EXPECT_EQ(keyOfPlain("/photos//a.jpg"), std::nullopt);
}

TEST(PlainPath, IsNoneBeyondAscii) {
    EXPECT_EQ(keyOfPlain(u8"/photos/\u0080.jpg"), std::nullopt);
    EXPECT_EQ(keyOfPlain("/photos/\x7F.jpg"), preferred("/photos/\x7F.jpg"));
}

TEST(CacheKey, IsThatOfTheRuleForEverySpelling) {
    for (const NativeString& beginning : {NativeString(), currentFolder()}) {
        for (const NativeString& path : pathsBehind(beginning)) {
            ASSERT_EQ(makeCacheKey(path), literalKey(path));
        }
    }
}

TEST(CacheKey, IsThatOfTheRuleForEveryCharacter) {
    for (int character = 1; character < 256; ++character) {
        NativeString path = currentFolder();
        path += std::filesystem::path::preferred_separator;
        path += static_cast<NativeString::value_type>(character);
        path += 'A';
        EXPECT_EQ(makeCacheKey(path), literalKey(path)) << character;
    }
}

}  // namespace
}  // namespace exiv2_wp::internal
