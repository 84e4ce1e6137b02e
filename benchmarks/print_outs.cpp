#include "print_outs.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace benchmarks {

namespace {

struct Entry {
    const char* group;
    const char* type;
    const char* count;
    const char* value;
};

// What cameras print most, as often as they print it: short numbers of the maker's own.
constexpr std::array<Entry, 9> kEntries = {{
    {"Exif.CanonCs.Setting", "SShort", "  1", "32767"},
    {"Exif.Photo.Exposure", "Rational", "  1", "10/1250"},
    {"Exif.CanonSi.ShotInformation", "Short", "  1", "0"},
    {"Exif.Image.ArtistName", "Ascii", " 29", "EF24-70mm f/2.8L USM, a lens"},
    {"Exif.CanonPi.AFPoint", "SShort", "  4", "0 17 -1 32767"},
    {"Exif.NikonLd2.LensValue", "Byte", "  1", "148"},
    {"Exif.Photo.DateAndTime", "Ascii", " 20", "2021:07:04 18:30:05"},
    {"Xmp.crs.DevelopSetting", "XmpText", "  5", "+0.25"},
    {"Exif.Iop.Version", "Undefined", "  4", "48 49 48 48"},
}};

// In the tool's columns.
std::string line(const Entry& entry, const std::string& number) {
    std::string text = entry.group + number;
    text.resize(45, ' ');
    text += entry.type;
    text.resize(57, ' ');
    return text + entry.count + "  " + entry.value + '\n';
}

}  // namespace

std::string makePrintOut(int tags) {
    std::string text;
    for (std::size_t i = 0; i < static_cast<std::size_t>(tags); ++i) {
        text += line(kEntries[i % kEntries.size()], std::to_string(i));
    }
    return text;
}

std::vector<std::string> recordedPrintOuts(const std::string& suffix, const std::string& fallback) {
    std::vector<std::string> texts;
    const char* const folder = std::getenv("EXIV2_WRAPPER_PRINTOUTS");
    if (folder == nullptr) {
        return {fallback};
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == suffix) {
            std::ifstream stream(entry.path(), std::ios::binary);
            texts.emplace_back(std::istreambuf_iterator<char>(stream),
                               std::istreambuf_iterator<char>());
        }
    }
    return texts.empty() ? std::vector{fallback} : texts;
}

}  // namespace benchmarks
