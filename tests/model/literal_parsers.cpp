#include "model/literal_parsers.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <locale>
#include <optional>
#include <sstream>
#include <vector>

#include "model/lens_id_keys.h"
#include "text/literal_text.h"

namespace test_support {

namespace {

using exiv2_wp::internal::CliExifMetadata;
using exiv2_wp::internal::CliExifTag;
using exiv2_wp::internal::IntegerList;
using exiv2_wp::internal::Rational;
using exiv2_wp::internal::RationalList;

std::vector<std::string> splitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line, '\n');) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> splitWords(const std::string& text) {
    std::vector<std::string> words;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

bool isDropped(const std::string& key, const std::string& type) {
    const std::string lowerKey = literalLower(key);
    return lowerKey == "exif.photo.makernote" || lowerKey == "exif.image.makernote" ||
           (lowerKey.find(".makernote") != std::string::npos && type == "undefined");
}

void readNumbers(CliExifTag& tag) {
    const bool isRational = tag.type == "rational" || tag.type == "srational";
    std::vector<std::int64_t> integers;
    std::vector<Rational> rationals;
    for (const std::string& word : splitWords(std::string(tag.value))) {
        if (!isRational) {
            if (const auto number = literalInteger(word)) {
                integers.push_back(*number);
            }
            continue;
        }
        const std::size_t slash = word.find('/');
        if (slash == std::string::npos) {
            continue;
        }
        const auto first = literalInteger(word.substr(0, slash));
        const auto second = literalInteger(word.substr(slash + 1));
        if (first && second) {
            rationals.emplace_back(*first, *second);
        }
    }
    tag.integers = IntegerList(integers);
    tag.rationals = RationalList(rationals);
}

std::string_view keep(const std::string& text, CliExifMetadata& record) {
    record.texts.push_back(std::make_shared<const std::string>(text));
    return *record.texts.back();
}

void readLine(const std::string& line, CliExifMetadata& record) {
    std::istringstream stream(line);
    stream.imbue(std::locale::classic());
    std::string key;
    std::string type;
    std::string count;
    if (!(stream >> key >> type >> count)) {
        return;
    }
    CliExifTag tag;
    tag.key = keep(key, record);
    tag.type = keep(literalLower(type), record);
    const std::int64_t number = literalInteger(count).value_or(0);
    if (number >= 1 && number <= 2147483647) {
        tag.count = static_cast<std::int32_t>(number);
    }
    std::string value;
    std::getline(stream >> std::ws, value);
    tag.value = keep(literalTrim(value), record);
    if (isDropped(key, literalLower(type))) {
        return;
    }
    readNumbers(tag);
    record.tags.emplace(tag.key, tag);
}

void setFNumber(CliExifMetadata& record) {
    for (const char* const maker : {"Photo", "Image", "Pentax", "PentaxDng", "Samsung2"}) {
        const auto tag = record.tags.find("Exif." + std::string(maker) + ".FNumber");
        if (tag != record.tags.end() && !tag->second.rationals.empty()) {
            const auto& rational = tag->second.rationals[0];
            record.fNumber =
                static_cast<float>(rational.first) / static_cast<float>(rational.second);
            return;
        }
    }
}

void setLensId(CliExifMetadata& record) {
    for (const std::string key : kLensIdKeys) {
        const auto tag = record.tags.find(key);
        if (tag == record.tags.end() || tag->second.integers.empty()) {
            continue;
        }
        const std::int64_t id = tag->second.integers[0];
        if (key.find("Exif.NikonLd4") != std::string::npos || id > 0) {
            record.lensId = static_cast<std::int32_t>(static_cast<std::uint64_t>(id) & 0xFFFFFFFFU);
            return;
        }
    }
}

std::string findValue(const std::vector<std::string>& lines, const std::string& label) {
    for (const std::string& line : lines) {
        if (line.compare(0, label.size(), label) == 0) {
            const std::size_t colon = line.find(':');
            return colon == std::string::npos ? std::string() : line.substr(colon + 2);
        }
    }
    return {};
}

}  // namespace

bool literalParsePrintAllOutput(const std::string& output, CliExifMetadata& record) {
    if (output.empty()) {
        return true;
    }
    for (std::string line : splitLines(output)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        line = literalTrim(line);
        if (!line.empty()) {
            readLine(line, record);
        }
    }
    setFNumber(record);
    setLensId(record);
    return !record.tags.empty();
}

bool literalParseSummaryOutput(const std::string& output, CliExifMetadata& record) {
    const std::vector<std::string> lines = splitLines(output);
    const std::string lensName = findValue(lines, "Lens name");
    if (!lensName.empty()) {
        record.lensName = lensName;
    }
    record.focalLength =
        literalFloat(findValue(lines, "Focal length")).value_or(record.focalLength);
    if (const auto step = literalFloat(findValue(lines, "Subject distance"))) {
        const auto distance =
            static_cast<float>(std::pow(10.0, static_cast<double>(*step) / 0.4) * 0.01);
        record.subjectDistance = distance > 10000.0F ? 10000.0F : distance;
    }
    return true;
}

}  // namespace test_support
