#include <algorithm>
#include <limits>
#include <memory>

#include "exiv2_wrapper/model/print_all_parser.h"
#include "fuzz/canned_runner.h"
#include "fuzz/checks.h"
#include "fuzz/literal_raw_tags.h"

namespace {

using exiv2_wp::ExivReader;
using exiv2_wp::internal::CliExifMetadata;

constexpr std::uint32_t kUntouched = 0xABCDEF01;

// An array as large as the reader may fill: the sanitizer sees when it writes behind that.
template <typename Number>
std::vector<Number> arrayFor(int count, std::size_t mostElements) {
    const std::size_t capacity = count > 0 ? static_cast<std::size_t>(count) : 0;
    return std::vector<Number>(std::min(capacity, mostElements + 1));
}

template <typename Number, typename Literal>
void checkArray(const ExivReader& reader, const char* key, int count, std::size_t mostElements,
                const Literal& literal) {
    std::vector<Number> fast = arrayFor<Number>(count, mostElements);
    const int written = reader.getRawExifTag(key, fast.data(), count);
    fuzz::require(written == static_cast<int>(literal.size()), "both fill as many elements");
    fuzz::require(std::equal(literal.begin(), literal.end(), fast.begin()), "with the same values");
}

template <typename Pair, typename Literal>
void checkPair(const ExivReader& reader, const char* key, int index, const Literal& literal) {
    using Number = typename Pair::first_type;
    Pair pair = {static_cast<Number>(kUntouched), 7};
    const Pair before = pair;
    const bool result = reader.getRawExifTag(key, index, pair);
    fuzz::require(result == literal.has_value(), "both find a pair or none");
    fuzz::require(pair == literal.value_or(before), "the same one");
}

void checkElements(const ExivReader& reader, const CliExifMetadata& metadata, const char* key,
                   int index, int count, std::size_t most) {
    const fuzz::LiteralTag tag(metadata, key);
    std::string text = "as it was";
    fuzz::require(reader.getRawExifTag(key, text) == tag.isFound(), "both find the tag");
    fuzz::require(text == (tag.isFound() ? tag.text() : "as it was"), "with the same text");

    checkPair<std::pair<std::uint32_t, std::uint32_t>>(reader, key, index,
                                                       tag.pairAt<std::uint32_t>(index));
    checkPair<std::pair<std::int32_t, std::int32_t>>(reader, key, index,
                                                     tag.pairAt<std::int32_t>(index));
    std::uint32_t number = kUntouched;
    const auto literal = tag.numberAt(index);
    fuzz::require(reader.getRawExifTag(key, index, &number) == literal.has_value(),
                  "both find a number or none");
    fuzz::require(number == literal.value_or(kUntouched), "the same one");

    checkArray<std::uint32_t>(reader, key, count, most, tag.numbers<std::uint32_t>(count));
    checkArray<std::int16_t>(reader, key, count, most, tag.numbers<std::int16_t>(count));
    checkArray<std::pair<std::uint32_t, std::uint32_t>>(reader, key, count, most, tag.pairs(count));
}

// What the reader asks the tool for anew; it prints the same again.
void checkToolReadings(const ExivReader& reader, const std::string& printed, const char* key,
                       int index) {
    const fuzz::LiteralToolReading literal(printed, key);
    std::int32_t size = -1;
    unsigned char* data = nullptr;
    const bool result = reader.getRawExifTag(key, &size, &data);
    const std::unique_ptr<unsigned char, void (*)(unsigned char*)> owner(
        data, [](unsigned char* bytes) { ::operator delete(bytes); });
    fuzz::require(result == literal.bytes().has_value(), "both read bytes or none");
    const std::string bytes =
        data == nullptr ? "" : fuzz::textOf(data, static_cast<std::size_t>(size));
    fuzz::require(bytes == literal.bytes().value_or(""), "the same ones");

    std::uint32_t number = kUntouched;
    const bool isRead = reader.getInterpretedRawExifTag(key, index, &number);
    const auto word = literal.number(index);
    fuzz::require(isRead == word.has_value(), "both read the word or not");
    fuzz::require(number == word.value_or(kUntouched), "the same number");
}

bool isSame(const ExivReader::XMPData& a, const ExivReader::XMPData& b) {
    return a.ns == b.ns && a.name == b.name && a.value == b.value;
}

// A path that the cache doesn't know.
std::string freshFile() {
    static unsigned long number = 0;
    return "/photos/" + std::to_string(number++);
}

}  // namespace

// The input: an index and a count of four bytes each, a key to the line feed, then what the tool
// prints, whatever it is asked.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string printed = fuzz::textOf(data, size);
    const int index = fuzz::takeNumber(printed);
    const int count = fuzz::takeNumber(printed);
    std::string key = fuzz::takeLine(printed).c_str();
    std::replace_if(
        key.begin(), key.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }, '?');

    const fuzz::LogTexts log;
    fuzz::cannedRunner() = {.output = printed};
    const ExivReader reader(freshFile());
    CliExifMetadata metadata;
    (void)exiv2_wp::internal::parsePrintAllOutput(printed, metadata);

    checkElements(reader, metadata, key.c_str(), index, count, printed.size());
    checkToolReadings(reader, printed, key.c_str(), std::min(index, 1000));
    const auto literal = fuzz::literalXmp(metadata);
    const auto properties = reader.getXMPData();
    fuzz::require(
        std::equal(properties.begin(), properties.end(), literal.begin(), literal.end(), isSame),
        "both list the same properties");
    return 0;
}
