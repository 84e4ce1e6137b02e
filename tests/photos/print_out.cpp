#include "photos/print_out.h"

#include <cstddef>
#include <sstream>

#include "text/literal_text.h"

namespace test_support {

namespace {

bool isRational(const std::string& type) {
    return type == "Rational" || type == "SRational";
}

void readNumbers(PrintedEntry& entry) {
    std::istringstream words(entry.value);
    for (std::string word; words >> word;) {
        const std::size_t slash = word.find('/');
        const auto first = literalInteger(word.substr(0, slash));
        if (!isRational(entry.type)) {
            if (first && slash == word.npos) {
                entry.integers.push_back(*first);
            }
        } else if (first && slash != word.npos) {
            if (const auto second = literalInteger(word.substr(slash + 1))) {
                entry.rationals.emplace_back(*first, *second);
            }
        }
    }
}

}  // namespace

PrintedEntries readPrintOut(const std::string& printAll) {
    PrintedEntries entries;
    std::istringstream lines(printAll);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream columns(line);
        std::string key;
        std::string count;
        PrintedEntry entry;
        if (!(columns >> key >> entry.type >> count) || entries.contains(key)) {
            continue;
        }
        std::getline(columns >> std::ws, entry.value);
        entry.value.resize(entry.value.find_last_not_of(" \t\r\n\v\f") + 1);
        readNumbers(entry);
        entries.emplace(key, std::move(entry));
    }
    return entries;
}

bool isMakerNoteBlob(const std::string& key, const PrintedEntry& entry) {
    const std::string name = literalLower(key);
    return name == "exif.photo.makernote" || name == "exif.image.makernote" ||
           (name.find(".makernote") != name.npos && entry.type == "Undefined");
}

std::string summaryValue(const std::string& summary, const std::string& label) {
    std::istringstream lines(summary);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(label)) {
            return line.substr(line.find(':') + 2);
        }
    }
    return {};
}

}  // namespace test_support
