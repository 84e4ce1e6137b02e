#include "model/record_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <locale>
#include <map>
#include <sstream>

namespace test_support {

namespace {

std::string shown(float value) {
    if (std::isnan(value)) {
        return "not a number";
    }
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(9);
    text << value;
    return text.str();
}

}  // namespace

std::string toText(const exiv2_wp::internal::CliExifTag& tag) {
    return std::string(tag.key) + ' ' + std::string(tag.type) + ' ' + std::to_string(tag.count) +
           ' ' + ::testing::PrintToString(tag.value) + ' ' +
           ::testing::PrintToString(tag.rationals) + ' ' + ::testing::PrintToString(tag.integers) +
           '\n';
}

std::string toText(const exiv2_wp::internal::CliExifMetadata& record) {
    std::map<std::string, std::string> entries;
    for (const auto& [key, tag] : record.tags) {
        entries[std::string(key)] = std::string(key) + ": " + toText(tag);
    }
    std::string text = "fileKey " + ::testing::PrintToString(record.fileKey) + "\nlensName " +
                       ::testing::PrintToString(record.lensName) + "\nfocalLength " +
                       shown(record.focalLength) + "\nfocalLength35mm " +
                       shown(record.focalLength35mm) + "\nsubjectDistance " +
                       shown(record.subjectDistance) + "\nfNumber " + shown(record.fNumber) +
                       "\nlensId " + std::to_string(record.lensId) + '\n';
    for (const auto& [key, entry] : entries) {
        text += entry;
    }
    return text;
}

}  // namespace test_support
