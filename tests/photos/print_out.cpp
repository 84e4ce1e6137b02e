#include "photos/print_out.h"

#include <cctype>
#include <cstddef>
#include <sstream>

namespace test_support {

namespace {

std::string lower(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

bool isRational(const std::string& type) {
    return type == "Rational" || type == "SRational";
}

bool readWhole(const std::string& word, std::int64_t& number) {
    const std::size_t digits = word.starts_with('+') || word.starts_with('-') ? 1 : 0;
    if (digits == word.size() || word.find_first_not_of("0123456789", digits) != word.npos) {
        return false;
    }
    number = std::stoll(word);
    return true;
}

void readNumbers(PrintedEntry& entry) {
    std::istringstream words(entry.value);
    for (std::string word; words >> word;) {
        std::int64_t first = 0;
        std::int64_t second = 0;
        const std::size_t slash = word.find('/');
        if (!isRational(entry.type)) {
            if (readWhole(word, first)) {
                entry.integers.push_back(first);
            }
        } else if (slash != word.npos && readWhole(word.substr(0, slash), first) &&
                   readWhole(word.substr(slash + 1), second)) {
            entry.rationals.emplace_back(first, second);
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
    const std::string name = lower(key);
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
