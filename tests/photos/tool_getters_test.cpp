#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photos/print_out.h"
#include "photos/real_exiv2.h"
#include "support/photo_list.h"
#include "support/skip_or_fail.h"

// The two getters that ask the tool anew, for keys of every kind in every photo, against what the
// tool prints about the whole photo in one run.

namespace exiv2_wp {
namespace {

namespace fs = std::filesystem;
using test_support::printedByExiv2;

// What stands behind each key in a print-out in which a key begins a line; of a key that is printed
// several times, all of it with the key between.
std::map<std::string, std::string> byKey(const std::string& printOut) {
    std::map<std::string, std::string> values;
    std::istringstream lines(printOut);
    std::string key;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("Exif.") || line.starts_with("Xmp.")) {
            const std::size_t end = std::min(line.find(' '), line.size());
            key = line.substr(0, end);
            const auto [value, isNew] = values.try_emplace(key, line.substr(end));
            value->second += isNew ? "\n" : line + "\n";
        } else {
            values[key] += line + "\n";
        }
    }
    return values;
}

template <typename Value>
std::set<std::string> keysOf(const std::map<std::string, Value>& values) {
    std::set<std::string> keys;
    for (const auto& [key, value] : values) {
        keys.insert(key);
    }
    return keys;
}

using Bytes = std::vector<unsigned>;

// Two hexadecimal digits make a byte, wherever they stand; none when one is left over.
Bytes bytesOf(const std::string& dump) {
    std::string digits;
    for (const char c : dump) {
        if (std::isxdigit(static_cast<unsigned char>(c)) != 0) {
            digits += c;
        }
    }
    Bytes bytes;
    for (std::size_t i = 0; digits.size() % 2 == 0 && i < digits.size(); i += 2) {
        bytes.push_back(static_cast<unsigned>(std::stoul(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

Bytes rawBytes(const ExivReader& reader, const std::string& key) {
    std::int32_t size = -1;
    unsigned char* data = nullptr;
    const bool isRead = reader.getRawExifTag(key.c_str(), &size, &data);
    Bytes bytes(data, data + size);
    ::operator delete(data);
    EXPECT_EQ(isRead, !bytes.empty()) << key;
    return bytes;
}

// The numbers at the beginning of a text, and how many words that is.
std::vector<std::string> numbersOf(const std::string& text) {
    std::vector<std::string> numbers;
    std::istringstream words(text);
    for (std::uint64_t number = 0; words >> number;) {
        numbers.push_back(number <= 4294967295 ? std::to_string(number) : "too large");
    }
    return numbers;
}

// As many as `count`; one that isn't read is "too large".
std::vector<std::string> interpretedNumbers(const ExivReader& reader, const std::string& key,
                                            std::size_t count) {
    std::vector<std::string> numbers;
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t number = 0;
        const bool isRead =
            reader.getInterpretedRawExifTag(key.c_str(), static_cast<int>(i), &number);
        numbers.push_back(isRead ? std::to_string(number) : "too large");
    }
    return numbers;
}

class PhotoToolGetters : public ::testing::TestWithParam<fs::path> {
protected:
    void SetUp() override {
        if (GetParam().empty()) {
            SKIP_OR_FAIL("no photos in " PHOTOS);
        }
        ASSERT_TRUE(initialize(tool_.folder().path()));
    }

    // The keys of the photo that begin so.
    [[nodiscard]] static std::set<std::string> printedKeys(const std::string& beginning) {
        std::set<std::string> keys =
            keysOf(test_support::readPrintOut(printedByExiv2("-PEXkycv -q", GetParam())));
        std::erase_if(keys, [&](const std::string& key) { return !key.starts_with(beginning); });
        return keys;
    }

    // The photo's first key of each type and number of elements: each key costs runs of the tool,
    // and the getters know keys by nothing else.
    [[nodiscard]] static std::set<std::string> keysOfEachKind() {
        std::set<std::string> keys;
        std::set<std::pair<std::string, std::size_t>> kinds;
        for (const auto& [key, entry] :
             test_support::readPrintOut(printedByExiv2("-PEXkycv -q", GetParam()))) {
            constexpr std::size_t kMany = 5;
            const std::size_t count = entry.integers.size() + entry.rationals.size();
            if (kinds.emplace(entry.type, std::min(count, kMany)).second) {
                keys.insert(key);
            }
        }
        return keys;
    }

private:
    test_support::RealExiv2 tool_;
};

TEST_P(PhotoToolGetters, GiveTheBytesOfAKeyAsDumped) {
    const ExivReader reader(GetParam().string());
    const auto dumps = byKey(printedByExiv2("-PEkh -q", GetParam()));
    EXPECT_EQ(keysOf(dumps), printedKeys("Exif."));
    for (const std::string& key : keysOfEachKind()) {
        if (const auto dump = dumps.find(key); dump != dumps.end()) {
            EXPECT_EQ(rawBytes(reader, key), bytesOf(dump->second)) << key;
        }
    }
}

TEST_P(PhotoToolGetters, GiveTheNumbersOfAKeyAsInterpreted) {
    const ExivReader reader(GetParam().string());
    const auto texts = byKey(printedByExiv2("-PXEkt -q", GetParam()));
    for (const std::string& key : keysOfEachKind()) {
        ASSERT_TRUE(texts.contains(key)) << key;
        const std::vector<std::string> numbers = numbersOf(texts.at(key));
        // A long list costs a run for each of its numbers, so only its beginning is read.
        const std::size_t count = std::min(numbers.size(), std::size_t{2});
        EXPECT_EQ(interpretedNumbers(reader, key, count),
                  std::vector(numbers.begin(), numbers.begin() + static_cast<long>(count)))
            << key;
        std::uint32_t number = 0;
        if (numbers.size() == count) {
            EXPECT_FALSE(
                reader.getInterpretedRawExifTag(key.c_str(), static_cast<int>(count), &number))
                << key;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Photos, PhotoToolGetters,
                         ::testing::ValuesIn(test_support::sampleFiles(PHOTOS)),
                         test_support::photoName);
INSTANTIATE_TEST_SUITE_P(Sample, PhotoToolGetters, ::testing::Values(SAMPLE_PHOTO),
                         test_support::photoName);

}  // namespace
}  // namespace exiv2_wp
