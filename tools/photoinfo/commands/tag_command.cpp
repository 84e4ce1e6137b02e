#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/commands/files_command.h"
#include "photoinfo/tool/exiv_reader.h"

namespace photoinfo {

namespace {

using exiv2_wp::ExivReader;

template <typename Number>
using Pair = std::pair<Number, Number>;

/// All that the library can tell of one tag. What isn't of its kind is empty.
struct Tag {
    std::string text;
    std::vector<std::uint32_t> numbers;
    std::vector<std::int16_t> shortNumbers;
    std::vector<Pair<std::uint32_t>> rationals;
    std::vector<Pair<std::int32_t>> signedRationals;
    std::optional<std::vector<unsigned char>> bytes;
    std::vector<std::uint32_t> interpreted;
};

// Each interpreted number costs a run of the tool; tags have a few at most.
constexpr int kInterpretedLimit = 16;

// An array of the caller's that no tag can overflow: an element is a character of the text at
// least.
template <typename Number>
std::vector<Number> elementsOf(const ExivReader& reader, const char* key, std::size_t limit) {
    std::vector<Number> elements(limit);
    const int count = reader.getRawExifTag(key, elements.data(), static_cast<int>(limit));
    elements.resize(static_cast<std::size_t>(count));
    return elements;
}

std::vector<Pair<std::int32_t>> signedRationalsOf(const ExivReader& reader, const char* key,
                                                  std::size_t limit) {
    std::vector<Pair<std::int32_t>> rationals;
    Pair<std::int32_t> rational;
    while (rationals.size() < limit &&
           reader.getRawExifTag(key, static_cast<int>(rationals.size()), rational)) {
        rationals.push_back(rational);
    }
    return rationals;
}

struct ReleaseBytes {
    void operator()(unsigned char* bytes) const { ::operator delete(bytes); }
};

std::optional<std::vector<unsigned char>> bytesOf(const ExivReader& reader, const char* key) {
    std::int32_t size = 0;
    unsigned char* data = nullptr;
    if (!reader.getRawExifTag(key, &size, &data)) {
        return std::nullopt;
    }
    const std::unique_ptr<unsigned char, ReleaseBytes> owner(data);
    return std::vector<unsigned char>(data, data + size);
}

std::vector<std::uint32_t> interpretedOf(const ExivReader& reader, const char* key) {
    std::vector<std::uint32_t> numbers;
    std::uint32_t number = 0;
    for (int i = 0; i < kInterpretedLimit && reader.getInterpretedRawExifTag(key, i, &number);
         ++i) {
        numbers.push_back(number);
    }
    return numbers;
}

std::optional<Tag> readTag(const ExivReader& reader, const char* key) {
    Tag tag;
    if (!reader.getRawExifTag(key, tag.text)) {
        return std::nullopt;
    }
    constexpr auto kLimit = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
    const std::size_t limit = std::min(tag.text.size() + 1, kLimit);
    tag.numbers = elementsOf<std::uint32_t>(reader, key, limit);
    tag.shortNumbers = elementsOf<std::int16_t>(reader, key, limit);
    tag.rationals = elementsOf<Pair<std::uint32_t>>(reader, key, limit);
    tag.signedRationals = signedRationalsOf(reader, key, limit);
    tag.bytes = bytesOf(reader, key);
    tag.interpreted = interpretedOf(reader, key);
    return tag;
}

template <typename Number>
std::string show(Number number) {
    return std::to_string(number);
}

template <typename Number>
std::string show(const Pair<Number>& rational) {
    return std::to_string(rational.first) + "/" + std::to_string(rational.second);
}

std::string show(unsigned char byte) {
    constexpr std::array kDigits = {'0', '1', '2', '3', '4', '5', '6', '7',
                                    '8', '9', 'a', 'b', 'c', 'd', 'e', 'f'};
    return {kDigits.at(byte >> 4U), kDigits.at(byte & 0xFU)};
}

// Long lists, of maker notes for one, would fill the screen.
template <typename Element>
std::string showList(const std::vector<Element>& elements) {
    constexpr std::size_t kMost = 16;
    std::string text;
    for (std::size_t i = 0; i < elements.size() && i < kMost; ++i) {
        text += (i > 0 ? " " : "") + show(elements[i]);
    }
    return elements.size() > kMost ? text + " ... (" + std::to_string(elements.size()) + " in all)"
                                   : text;
}

Table tableOf(const Tag& tag) {
    Table table;
    table.row("Text", tag.text);
    table.row("Numbers", showList(tag.numbers));
    table.row("16-bit numbers", showList(tag.shortNumbers));
    table.row("Rationals", showList(tag.rationals));
    table.row("Signed rationals", showList(tag.signedRationals));
    table.row("Bytes of the dump", tag.bytes ? showList(*tag.bytes) : std::string());
    table.row("Interpreted", showList(tag.interpreted));
    return table;
}

template <typename Number>
Json pairsJson(const std::vector<Pair<Number>>& pairs) {
    Json list = Json::array();
    for (const auto& [numerator, denominator] : pairs) {
        list.push_back({numerator, denominator});
    }
    return list;
}

Json bytesJson(const std::vector<unsigned char>& bytes) {
    std::string digits;
    for (const unsigned char byte : bytes) {
        digits += show(byte);
    }
    return digits;
}

Json jsonOf(const Tag& tag) {
    return {
        {"text", tag.text},
        {"numbers", Json(tag.numbers)},
        {"shortNumbers", Json(tag.shortNumbers)},
        {"rationals", pairsJson(tag.rationals)},
        {"signedRationals", pairsJson(tag.signedRationals)},
        {"bytes", tag.bytes ? bytesJson(*tag.bytes) : Json()},
        {"interpreted", Json(tag.interpreted)},
    };
}

class TagCommand : public FilesCommand {
public:
    TagCommand()
        : FilesCommand(
              {.name = "tag",
               .description = "One tag in every form: text, numbers, rationals, bytes, interpreted",
               .jsonName = "tag",
               .nothing = "no such tag"},
              Tool::exiv2, Count::one) {}

protected:
    void addOptions(CLI::App& app) override {
        app.add_option("KEY", key_, "The tag's key, for example Exif.Photo.FNumber")
            ->type_name(" ")
            ->required();
    }

    std::optional<Finding> ask(const std::filesystem::path& file) override {
        const std::optional<Tag> tag = readTag(*makeExivReader(file), key_.c_str());
        return tag ? std::optional<Finding>({tableOf(*tag), jsonOf(*tag)}) : std::nullopt;
    }

private:
    std::string key_;
};

}  // namespace

std::unique_ptr<Command> makeTagCommand() {
    return std::make_unique<TagCommand>();
}

}  // namespace photoinfo
