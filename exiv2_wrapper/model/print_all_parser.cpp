#include "exiv2_wrapper/model/print_all_parser.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

namespace {

constexpr std::array kFNumberKeys = {
    "Exif.Photo.FNumber",     "Exif.Image.FNumber",    "Exif.Pentax.FNumber",
    "Exif.PentaxDng.FNumber", "Exif.Samsung2.FNumber",
};

// Where the makers keep their number for a lens. The two model names qualify by a number that
// stands alone in their text, as the 50 of "EF 50 mm"; so it has always been, and lens profiles
// rely on it. LensSpec and LensSpecification hold rationals as a rule and then never qualify.
constexpr std::array kLensIdKeys = {
    "Exif.CanonCs.LensType",      "Exif.Photo.LensModel",
    "Exif.Canon.LensModel",       "Exif.NikonLd1.LensIDNumber",
    "Exif.NikonLd2.LensIDNumber", "Exif.NikonLd3.LensIDNumber",
    "Exif.NikonLd4.LensID",       "Exif.NikonLd4.LensIDNumber",
    "Exif.Pentax.LensType",       "Exif.PentaxDng.LensType",
    "Exif.Minolta.LensID",        "Exif.SonyMinolta.LensID",
    "Exif.Sony1.LensID",          "Exif.Sony2.LensID",
    "Exif.Sony1.LensSpec",        "Exif.Sony2.LensSpec",
    "Exif.OlympusEq.LensType",    "Exif.Panasonic.LensType",
    "Exif.Samsung2.LensType",     "Exif.Photo.LensSpecification",
    "Exif.Nikon3.Lens",
};

// The group in which 0 is a lens like any other and doesn't mean "unknown".
constexpr std::string_view kZeroIsALens = "Exif.NikonLd4";

struct PrintedLine {
    std::string_view key;
    std::string_view type;  // as printed, any letter case
    std::string_view count;
    std::string_view value;
};

bool equalsIgnoringCase(std::string_view text, std::string_view lower) {
    return text.size() == lower.size() &&
           std::equal(text.begin(), text.end(), lower.begin(),
                      [](char a, char b) { return toLower(a) == b; });
}

bool containsIgnoringCase(std::string_view text, std::string_view lower) {
    return std::search(text.begin(), text.end(), lower.begin(), lower.end(),
                       [](char a, char b) { return toLower(a) == b; }) != text.end();
}

// False for a line of fewer than three words, which is no entry.
bool splitLine(std::string_view line, PrintedLine& printed) {
    std::string_view rest = line;
    printed.key = takeWord(rest);
    printed.type = takeWord(rest);
    printed.count = takeWord(rest);
    printed.value = trimmed(rest);
    return !printed.count.empty();
}

// The two top-level maker-note blobs always go. Other keys of a maker-note group go only when they
// are raw bytes: a maker-note version is worth keeping.
bool isMakerNoteBlob(const PrintedLine& printed) {
    return equalsIgnoringCase(printed.key, "exif.photo.makernote") ||
           equalsIgnoringCase(printed.key, "exif.image.makernote") ||
           (equalsIgnoringCase(printed.type, "undefined") &&
            containsIgnoringCase(printed.key, ".makernote"));
}

std::int32_t parseCount(std::string_view word) {
    const std::int64_t count = parseInteger(word).value_or(0);
    const bool isInRange = count >= 1 && count <= std::numeric_limits<std::int32_t>::max();
    return isInRange ? static_cast<std::int32_t>(count) : 0;
}

// So many entries are read at once, more than a photo has as a rule: what is kept of them is known
// before it is stored, and a hostile output needs no memory for lines that are not kept.
constexpr std::size_t kPortion = 1024;

// Takes the next entries off the front of `output`. A carriage return before the line feed is white
// space, and goes with the rest of it.
void takeEntries(std::string_view& output, std::vector<PrintedLine>& entries) {
    entries.clear();
    while (!output.empty() && entries.size() < kPortion) {
        const std::size_t lineFeed = output.find('\n');
        PrintedLine printed;
        if (splitLine(output.substr(0, lineFeed), printed) && !isMakerNoteBlob(printed)) {
            entries.push_back(printed);
        }
        output.remove_prefix(lineFeed == std::string_view::npos ? output.size() : lineFeed + 1);
    }
}

// Adds entries to a record. Allocations take a good part of the time, so all texts of a portion are
// kept in one.
class EntryKeeper {
public:
    explicit EntryKeeper(CliExifMetadata& record) : record_(record) {}

    // The first entry of a key counts; `entries` loses those whose keys came before.
    void add(std::vector<PrintedLine>& entries) {
        std::erase_if(entries, [this](const PrintedLine& printed) {
            return record_.tags.contains(printed.key);
        });
        if (entries.empty()) {
            return;
        }
        std::size_t size = 0;
        for (const PrintedLine& printed : entries) {
            size += printed.key.size() + printed.type.size() + printed.value.size();
        }
        text_ = std::make_shared<std::string>();
        text_->reserve(size);  // it stays where it is from now on
        record_.texts.push_back(text_);
        for (const PrintedLine& printed : entries) {
            add(printed);
        }
    }

private:
    void add(const PrintedLine& printed) {
        const std::string_view key = keep(printed.key);
        const auto [entry, isNew] = record_.tags.try_emplace(key);
        if (!isNew) {
            text_->resize(text_->size() - key.size());
            return;
        }
        CliExifTag& tag = entry->second;
        tag.key = key;
        tag.type = keep(lowerCased(printed.type));
        tag.value = keep(printed.value);
        tag.count = parseCount(printed.count);
        if (tag.type == "rational" || tag.type == "srational") {
            tag.rationals = RationalList(tag.value);
        } else {
            tag.integers = IntegerList(tag.value);
        }
    }

    std::string_view keep(std::string_view part) {
        const std::size_t begin = text_->size();
        *text_ += part;
        return std::string_view(*text_).substr(begin);
    }

    CliExifMetadata& record_;
    std::shared_ptr<std::string> text_;
};

void deriveFNumber(CliExifMetadata& record) {
    for (const char* const key : kFNumberKeys) {
        const CliExifTag* const tag = record.find(key);
        if (tag != nullptr && !tag->rationals.empty()) {
            const auto [numerator, denominator] = tag->rationals.front();
            // Single precision, and no guard: n/0 is infinite, 0/0 no number.
            record.fNumber = static_cast<float>(numerator) / static_cast<float>(denominator);
            return;
        }
    }
}

void deriveLensId(CliExifMetadata& record) {
    for (const std::string_view key : kLensIdKeys) {
        const CliExifTag* const tag = record.find(key);
        if (tag == nullptr || tag->integers.empty()) {
            continue;
        }
        const std::int64_t id = tag->integers.front();
        if (id > 0 || key.find(kZeroIsALens) != std::string_view::npos) {
            record.lensId = low32Bits(id);
            return;
        }
    }
}

}  // namespace

bool parsePrintAllOutput(std::string_view output, CliExifMetadata& record) {
    if (output.empty()) {
        return true;
    }
    std::vector<PrintedLine> entries;
    EntryKeeper keeper(record);
    takeEntries(output, entries);
    record.tags.reserve(record.tags.size() + entries.size());
    for (; !entries.empty(); takeEntries(output, entries)) {
        keeper.add(entries);
    }
    deriveFNumber(record);
    deriveLensId(record);
    return !record.tags.empty();
}

}  // namespace exiv2_wp::internal
