#include "exiv2_wrapper/model/print_all_parser.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <utility>

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

// Room is made for as many entries as a print-out of this size holds as a rule, up to a number that
// no real one reaches: the table then seldom grows, and a hostile output can't make it huge.
constexpr std::size_t kTypicalLine = 100;
constexpr std::size_t kMostReserved = 4096;

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

// Takes "numerator/denominator". A denominator of 0 is kept.
std::optional<std::pair<std::int64_t, std::int64_t>> takeRational(std::string_view& rest) {
    const auto numerator = takeInteger(rest);
    if (!numerator || !rest.starts_with('/')) {
        return std::nullopt;
    }
    rest.remove_prefix(1);
    const auto denominator = takeInteger(rest);
    if (!denominator) {
        return std::nullopt;
    }
    return std::pair(*numerator, *denominator);
}

// Adds entries to a record line by line. Numbers are gathered in vectors that serve all lines, so
// that each tag's own vector is allocated once, in its final size: most of the time that a
// print-out takes goes to allocations.
class EntryReader {
public:
    explicit EntryReader(TagTable& tags) : tags_(tags) {}

    void addLine(std::string_view line) {
        PrintedLine printed;
        if (!splitLine(line, printed) || isMakerNoteBlob(printed)) {
            return;
        }
        const auto [entry, isNew] = tags_.try_emplace(std::string(printed.key));
        if (!isNew) {
            return;
        }
        CliExifTag& tag = entry->second;
        tag.key = printed.key;
        tag.type = printed.type;
        lowerCase(tag.type);
        tag.value = printed.value;
        tag.count = parseCount(printed.count);
        if (tag.type == "rational" || tag.type == "srational") {
            gatherNumbers(printed.value, takeRational, rationals_, tag.rationals);
        } else {
            gatherNumbers(printed.value, takeInteger, integers_, tag.integers);
        }
    }

private:
    // A word counts when all of it is a number; others are skipped.
    template <typename Take, typename Numbers>
    static void gatherNumbers(std::string_view value, const Take& take, Numbers& gathered,
                              Numbers& numbers) {
        gathered.clear();
        for (skipSpace(value); !value.empty(); skipSpace(value)) {
            const auto number = take(value);
            if (takeUntilSpace(value).empty() && number) {
                gathered.push_back(*number);
            }
        }
        numbers = gathered;
    }

    TagTable& tags_;
    decltype(CliExifTag::rationals) rationals_;
    decltype(CliExifTag::integers) integers_;
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
    record.tags.reserve(std::min(output.size() / kTypicalLine, kMostReserved));
    EntryReader reader(record.tags);
    // A carriage return before the line feed is white space, and goes with the rest of it.
    for (std::string_view rest = output; !rest.empty();) {
        const std::size_t lineFeed = rest.find('\n');
        reader.addLine(rest.substr(0, lineFeed));
        rest.remove_prefix(lineFeed == std::string_view::npos ? rest.size() : lineFeed + 1);
    }
    deriveFNumber(record);
    deriveLensId(record);
    return !record.tags.empty();
}

}  // namespace exiv2_wp::internal
