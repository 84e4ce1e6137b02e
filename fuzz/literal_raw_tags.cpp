#include "fuzz/literal_raw_tags.h"

#include <algorithm>
#include <cstring>
#include <map>

#include "text/literal_text.h"

namespace fuzz {

namespace {

using exiv2_wp::ExivReader;
using exiv2_wp::internal::CliExifMetadata;
using exiv2_wp::internal::CliExifTag;
using test_support::isClassicSpace;
using test_support::literalTrim;

const std::map<std::string, std::string>& namespaces() {
    static const std::string kIptc = "http://iptc.org/std/Iptc4xmp";
    static const std::map<std::string, std::string> kNamespaces = {
        {"aux", "http://ns.adobe.com/exif/1.0/aux/"},
        {"cc", "http://creativecommons.org/ns#"},
        {"crs", "http://ns.adobe.com/camera-raw-settings/1.0/"},
        {"dc", "http://purl.org/dc/elements/1.1/"},
        {"exif", "http://ns.adobe.com/exif/1.0/"},
        {"exifEX", "http://cipa.jp/exif/1.0/"},
        {"Iptc4xmpCore", kIptc + "Core/1.0/xmlns/"},
        {"iptcCore", kIptc + "Core/1.0/xmlns/"},
        {"Iptc4xmpExt", kIptc + "Ext/2008-02-29/"},
        {"iptcExt", kIptc + "Ext/2008-02-29/"},
        {"lr", "http://ns.adobe.com/lightroom/1.0/"},
        {"pdf", "http://ns.adobe.com/pdf/1.3/"},
        {"photoshop", "http://ns.adobe.com/photoshop/1.0/"},
        {"plus", "http://ns.useplus.org/ldf/xmp/1.0/"},
        {"rdf", "http://www.w3.org/1999/02/22-rdf-syntax-ns#"},
        {"tiff", "http://ns.adobe.com/tiff/1.0/"},
        {"x", "adobe:ns:meta/"},
        {"xmp", "http://ns.adobe.com/xap/1.0/"},
        {"xmpBJ", "http://ns.adobe.com/xap/1.0/bj/"},
        {"xmpMM", "http://ns.adobe.com/xap/1.0/mm/"},
        {"xmpRights", "http://ns.adobe.com/xap/1.0/rights/"}};
    return kNamespaces;
}

// Takes an unsigned number off the front, as a stream does: white space and a sign first; a
// negative one wraps around. None when there are no digits or they don't fit.
std::optional<std::uint64_t> takeNumber(std::string& text) {
    while (!text.empty() && isClassicSpace(text[0])) {
        text.erase(0, 1);
    }
    const bool isNegative = !text.empty() && text[0] == '-';
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        text.erase(0, 1);
    }
    std::string digits = text.substr(0, text.find_first_not_of("0123456789"));
    text.erase(0, digits.size());
    if (digits.empty()) {
        return std::nullopt;
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    constexpr auto kLargest = "18446744073709551615";
    if (digits.size() > std::strlen(kLargest) ||
        (digits.size() == std::strlen(kLargest) && digits > kLargest)) {
        return std::nullopt;
    }
    const std::uint64_t number = digits.empty() ? 0 : std::stoull(digits);
    return isNegative ? ~number + 1 : number;
}

}  // namespace

LiteralTag::LiteralTag(const CliExifMetadata& metadata, const std::string& key) {
    for (const auto& [name, tag] : metadata.tags) {
        if (name == key) {
            tag_ = tag;
            isFound_ = true;
        }
    }
}

std::optional<std::uint32_t> LiteralTag::numberAt(int index) const {
    const auto numbers = asNumbers();
    if (!has(numbers, index)) {
        return std::nullopt;
    }
    const auto number = numbers[static_cast<std::size_t>(index)];
    return number && isIn<std::uint32_t>(*number)
               ? std::optional(static_cast<std::uint32_t>(*number))
               : std::nullopt;
}

std::vector<std::pair<std::uint32_t, std::uint32_t>> LiteralTag::pairs(int count) const {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    for (const Element& element : asPairs()) {
        const auto pair = narrowed<std::uint32_t>(element);
        if (static_cast<std::int64_t>(pairs.size()) >= count || !pair) {
            break;
        }
        pairs.push_back(*pair);
    }
    return pairs;
}

std::vector<LiteralTag::Element> LiteralTag::asPairs() const {
    std::vector<Element> pairs(tag_.rationals.begin(), tag_.rationals.end());
    for (const std::int64_t integer : tag_.integers) {
        pairs.emplace_back(integer, 1);
    }
    return pairs;
}

std::vector<std::optional<std::int64_t>> LiteralTag::asNumbers() const {
    std::vector<std::optional<std::int64_t>> numbers(tag_.integers.begin(), tag_.integers.end());
    for (const auto& [numerator, denominator] : tag_.rationals) {
        if (denominator == 0) {
            numbers.emplace_back(numerator);
        } else if (denominator == -1) {
            const bool isSmallest = numerator == std::numeric_limits<std::int64_t>::min();
            numbers.push_back(isSmallest ? std::nullopt : std::optional(-numerator));
        } else {
            numbers.emplace_back(numerator / denominator);
        }
    }
    return numbers;
}

LiteralToolReading::LiteralToolReading(const std::string& printed, const std::string& key) {
    value_ = literalTrim(printed);
    if (value_.compare(0, key.size(), key) == 0) {
        value_ = literalTrim(value_.substr(key.size()));
    }
    if (key.empty()) {
        value_.clear();
    }
}

std::optional<std::string> LiteralToolReading::bytes() const {
    std::string digits;
    for (const char c : value_) {
        if (c != '\0' && std::strchr("0123456789abcdefABCDEF", c) != nullptr) {
            digits += c;
        }
    }
    if (digits.empty() || digits.size() % 2 == 1) {
        return std::nullopt;
    }
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes += static_cast<char>(
            static_cast<unsigned char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

std::optional<std::uint32_t> LiteralToolReading::number(int index) const {
    std::string rest = value_;
    std::optional<std::uint64_t> number;
    for (int i = 0; i <= index; ++i) {
        number = takeNumber(rest);
        if (!number) {
            return std::nullopt;
        }
    }
    return number && *number <= std::numeric_limits<std::uint32_t>::max()
               ? std::optional(static_cast<std::uint32_t>(*number))
               : std::nullopt;
}

std::vector<ExivReader::XMPData> literalXmp(const CliExifMetadata& metadata) {
    const std::map<std::string_view, CliExifTag> sorted(metadata.tags.begin(), metadata.tags.end());
    std::vector<ExivReader::XMPData> properties;
    for (const auto& [name, tag] : sorted) {
        const std::string key(name);
        if (key.compare(0, 4, "Xmp.") != 0) {
            continue;
        }
        const std::size_t dot = key.find('.', 4);
        if (dot == std::string::npos || dot == 4 || dot == key.size() - 1) {
            continue;
        }
        const auto known = namespaces().find(key.substr(4, dot - 4));
        properties.push_back({known == namespaces().end() ? "" : known->second, key.substr(dot + 1),
                              std::string(tag.value)});
    }
    return properties;
}

}  // namespace fuzz
