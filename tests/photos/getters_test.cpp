#include <gtest/gtest.h>

#include <array>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photos/print_out.h"
#include "photos/real_exiv2.h"
#include "support/photo_list.h"
#include "support/skip_or_fail.h"

// The raw-tag getters that answer from the photo's metadata as a whole: every getter for every key
// of every photo, against what the tool prints.

namespace exiv2_wp {
namespace {

namespace fs = std::filesystem;
using test_support::PrintedEntries;
using test_support::PrintedEntry;

using Pair = std::pair<std::int64_t, std::int64_t>;

// All that the getters say about a key: a line a question, an element each where it is about one
// element, "-" for none.
class Answers {
public:
    void begin(const char* question) { text_ << '\n' << question << ':'; }
    void add(const std::string& text) { text_ << ' ' << ::testing::PrintToString(text); }
    void add(std::int64_t number) { text_ << ' ' << number; }
    void add(const Pair& pair) { text_ << ' ' << pair.first << '/' << pair.second; }
    void addNone() { text_ << " -"; }
    template <typename Value>
    void add(const std::optional<Value>& value) {
        value ? add(*value) : addNone();
    }
    [[nodiscard]] std::string text() const { return text_.str(); }

private:
    std::ostringstream text_;
};

// ---- as the getters answer

template <typename Number>
void askForPairs(const ExivReader& reader, const char* key, int elements, Answers& answers) {
    for (int index = -1; index <= elements; ++index) {
        std::pair<Number, Number> pair;
        reader.getRawExifTag(key, index, pair) ? answers.add(Pair(pair)) : answers.addNone();
    }
}

void askForNumbers(const ExivReader& reader, const char* key, int elements, Answers& answers) {
    for (int index = -1; index <= elements; ++index) {
        std::uint32_t number = 0;
        reader.getRawExifTag(key, index, &number) ? answers.add(number) : answers.addNone();
    }
}

template <typename Element>
void askForArray(const ExivReader& reader, const char* key, int room, Answers& answers) {
    std::vector<Element> array(static_cast<std::size_t>(room) + 1);
    const int written = reader.getRawExifTag(key, array.data(), room);
    for (int i = 0; i < written; ++i) {
        answers.add(array[static_cast<std::size_t>(i)]);
    }
}

std::string answersFor(const ExivReader& reader, const std::string& key, int elements) {
    Answers answers;
    answers.begin("text");
    std::string text;
    reader.getRawExifTag(key.c_str(), text) ? answers.add(text) : answers.addNone();
    answers.begin("unsigned pairs");
    askForPairs<std::uint32_t>(reader, key.c_str(), elements, answers);
    answers.begin("signed pairs");
    askForPairs<std::int32_t>(reader, key.c_str(), elements, answers);
    answers.begin("numbers");
    askForNumbers(reader, key.c_str(), elements, answers);
    for (const int room : {0, elements / 2, elements + 1}) {
        answers.begin("array of numbers");
        askForArray<std::uint32_t>(reader, key.c_str(), room, answers);
        answers.begin("array of short numbers");
        askForArray<std::int16_t>(reader, key.c_str(), room, answers);
        answers.begin("array of pairs");
        askForArray<std::pair<std::uint32_t, std::uint32_t>>(reader, key.c_str(), room, answers);
    }
    return answers.text();
}

// ---- as they should by the print-out

struct Range {
    std::int64_t least;
    std::int64_t most;
    [[nodiscard]] bool holds(std::int64_t number) const {
        return number >= least && number <= most;
    }
};

constexpr Range kUnsigned = {0, 4294967295};
constexpr Range kSigned = {-2147483648, 2147483647};
constexpr Range kShort = {-32768, 32767};

// The elements of an entry as pairs, an integer over 1.
std::vector<Pair> elementsOf(const PrintedEntry& entry) {
    std::vector<Pair> elements = entry.rationals;
    for (const std::int64_t integer : entry.integers) {
        elements.emplace_back(integer, 1);
    }
    return elements;
}

std::optional<Pair> asPair(const Pair& element, Range range) {
    return range.holds(element.first) && range.holds(element.second) ? std::optional(element)
                                                                     : std::nullopt;
}

std::optional<std::int64_t> asNumber(const Pair& element, Range range) {
    const std::int64_t number =
        element.second == 0 ? element.first : element.first / element.second;
    return range.holds(number) ? std::optional(number) : std::nullopt;
}

// One answer for each index from -1 to one too many.
template <typename Convert>
void answerOneByOne(const std::vector<Pair>& elements, Convert convert, Range range,
                    Answers& answers) {
    answers.addNone();
    for (const Pair& element : elements) {
        answers.add(convert(element, range));
    }
    answers.addNone();
}

template <typename Convert>
void answerAsArray(const std::vector<Pair>& elements, std::size_t room, Convert convert,
                   Range range, Answers& answers) {
    for (std::size_t i = 0; i < std::min(elements.size(), room); ++i) {
        const auto value = convert(elements[i], range);
        if (!value) {
            return;
        }
        answers.add(value);
    }
}

std::string answersFrom(const PrintedEntry& entry) {
    const std::vector<Pair> elements = elementsOf(entry);
    Answers answers;
    answers.begin("text");
    answers.add(entry.value);
    answers.begin("unsigned pairs");
    answerOneByOne(elements, asPair, kUnsigned, answers);
    answers.begin("signed pairs");
    answerOneByOne(elements, asPair, kSigned, answers);
    answers.begin("numbers");
    answerOneByOne(elements, asNumber, kUnsigned, answers);
    for (const std::size_t room : {std::size_t{0}, elements.size() / 2, elements.size() + 1}) {
        answers.begin("array of numbers");
        answerAsArray(elements, room, asNumber, kUnsigned, answers);
        answers.begin("array of short numbers");
        answerAsArray(elements, room, asNumber, kShort, answers);
        answers.begin("array of pairs");
        answerAsArray(elements, room, asPair, kUnsigned, answers);
    }
    return answers.text();
}

// ---- XMP properties

// Of the prefixes in these photos, those that the library knows.
const std::map<std::string, std::string> kNamespaces = {
    {"aux", "http://ns.adobe.com/exif/1.0/aux/"},
    {"crs", "http://ns.adobe.com/camera-raw-settings/1.0/"},
    {"dc", "http://purl.org/dc/elements/1.1/"},
    {"exif", "http://ns.adobe.com/exif/1.0/"},
    {"exifEX", "http://cipa.jp/exif/1.0/"},
    {"lr", "http://ns.adobe.com/lightroom/1.0/"},
    {"photoshop", "http://ns.adobe.com/photoshop/1.0/"},
    {"tiff", "http://ns.adobe.com/tiff/1.0/"},
    {"xmp", "http://ns.adobe.com/xap/1.0/"},
    {"xmpBJ", "http://ns.adobe.com/xap/1.0/bj/"},
    {"xmpMM", "http://ns.adobe.com/xap/1.0/mm/"},
    {"xmpRights", "http://ns.adobe.com/xap/1.0/rights/"},
};

std::string propertyText(const std::string& ns, const std::string& name, const std::string& value) {
    return name + " of " + ns + ": " + value;
}

std::vector<std::string> propertiesFrom(const PrintedEntries& entries) {
    std::vector<std::string> properties;
    for (const auto& [key, entry] : entries) {
        if (!key.starts_with("Xmp.") || test_support::isMakerNoteBlob(key, entry)) {
            continue;
        }
        const std::size_t dot = key.find('.', 4);
        const auto ns = kNamespaces.find(key.substr(4, dot - 4));
        properties.push_back(propertyText(ns == kNamespaces.end() ? "" : ns->second,
                                          key.substr(dot + 1), entry.value));
    }
    return properties;
}

// ----

class PhotoGetters : public ::testing::TestWithParam<fs::path> {
protected:
    void SetUp() override {
        if (GetParam().empty()) {
            SKIP_OR_FAIL("no photos in " PHOTOS);
        }
        ASSERT_TRUE(initialize(tool_.folder().path()));
        entries =
            test_support::readPrintOut(test_support::printedByExiv2("-PXEkycv -q", GetParam()));
        ASSERT_FALSE(entries.empty());
    }

    PrintedEntries entries;

private:
    test_support::RealExiv2 tool_;
};

TEST_P(PhotoGetters, AnswerForEveryKeyAsThePrintOutSays) {
    const ExivReader reader(GetParam().string());
    const std::string nothing = answersFor(reader, "Exif.Image.Nothing", 0);

    for (const auto& [key, entry] : entries) {
        if (test_support::isMakerNoteBlob(key, entry)) {
            EXPECT_EQ(answersFor(reader, key, 0), nothing) << key;
        } else {
            const int elements = static_cast<int>(elementsOf(entry).size());
            EXPECT_EQ(answersFor(reader, key, elements), answersFrom(entry)) << key;
        }
    }
}

TEST_P(PhotoGetters, ListTheXmpPropertiesThatArePrinted) {
    const ExivReader reader(GetParam().string());
    std::vector<std::string> properties;
    for (const ExivReader::XMPData& property : reader.getXMPData()) {
        properties.push_back(propertyText(property.ns, property.name, property.value));
    }
    EXPECT_EQ(properties, propertiesFrom(entries));
}

INSTANTIATE_TEST_SUITE_P(Photos, PhotoGetters, ::testing::ValuesIn(test_support::listFiles(PHOTOS)),
                         test_support::photoName);
INSTANTIATE_TEST_SUITE_P(Sample, PhotoGetters, ::testing::Values(SAMPLE_PHOTO),
                         test_support::photoName);

}  // namespace
}  // namespace exiv2_wp
