#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "real_exiftool/fresh_images.h"
#include "support/exported_text.h"
#include "support/fields.h"

// A host in small: asks everything that is exported about photos, and writes the answers as text.
//
//   answers exiv2 OUTPUT TOOLS PHOTO...
//   answers previews OUTPUT TOOLS PHOTO...
//   answers exiftool OUTPUT TOOLS EXIFTOOLS PHOTO...
//
// TOOLS holds exiv2.exe, EXIFTOOLS exiftool.exe. What is written depends on no folder's name.
namespace {

namespace fs = std::filesystem;
using exiv2_wp::ExivReader;
using test_support::Fields;
using test_support::toText;

// A text, integers, fractions without and with a sign, bytes, and what most photos lack.
constexpr std::array kKeys = {"Exif.Image.Make",        "Exif.Image.Orientation",
                              "Exif.Image.XResolution", "Exif.Photo.ExposureBiasValue",
                              "Exif.Photo.ExifVersion", "Exif.GPSInfo.GPSLatitude"};
// Those that cost a run of the tool for each photo.
constexpr auto kKeyOfBytes = "Exif.Photo.ExposureTime";
constexpr auto kInterpretedKey = "Exif.Photo.ISOSpeedRatings";

constexpr int kCount = 4;  // of an array's elements

// ---- exiv2

std::string orientationOf(const fs::path& photo) {
    Fields fields;
    exiv2_wp::readExiv2Orientation(photo, [&](int value) { fields.add("orientation", value); });
    return fields.add("isTiffRaw", exiv2_wp::isTiffRaw(photo)).text();
}

std::string infoOf(const fs::path& photo) {
    std::string text;
    int tags = 0;
    exiv2_wp::readExiv2Info(
        photo, "Canon", "Canon EOS 40D",
        [&](const exiv2_wp::SLensInfo& lens) { text += toText(lens); },
        [&](const exiv2_wp::SMetadataExiv& values) {
            text += Fields()
                        .add("focusDistance", values.focusDistance)
                        .add("focalLength35mm", values.focalLength35mm)
                        .add("focalPlaneXResolution", values.focalPlaneXResolution)
                        .add("focalPlaneYResolution", values.focalPlaneYResolution)
                        .add("exposureBias", values.exposureBias)
                        .add("bitsPerSample", values.bitsPerSample)
                        .text();
        },
        [&] { ++tags; });
    return text + Fields().add("tags", tags).text();
}

template <typename Element>
void addElements(Fields& fields, const char* name, const ExivReader& reader, const char* key) {
    std::array<Element, kCount> elements{};
    const int count = reader.getRawExifTag(key, elements.data(), kCount);
    fields.add(name, std::vector<Element>(elements.begin(), elements.begin() + count));
}

// Each element of the value, the first that isn't there included: that isn't written to.
template <typename Pair>
void addPairs(Fields& fields, const char* name, const ExivReader& reader, const char* key) {
    for (int index = 0; index < kCount; ++index) {
        Pair pair{};
        const bool isThere = reader.getRawExifTag(key, index, pair);
        fields.add(name, std::pair(isThere, pair));
    }
}

void addNumbers(Fields& fields, const ExivReader& reader, const char* key) {
    for (int index = 0; index < kCount; ++index) {
        std::uint32_t number = 0;
        const bool isThere = reader.getRawExifTag(key, index, &number);
        fields.add("number", std::pair(isThere, number));
    }
}

std::string tagOf(const ExivReader& reader, const char* key) {
    Fields fields;
    std::string text;
    const bool isThere = reader.getRawExifTag(key, text);
    fields.add(key, std::pair(isThere, text));
    addPairs<std::pair<std::uint32_t, std::uint32_t>>(fields, "rational", reader, key);
    addPairs<std::pair<std::int32_t, std::int32_t>>(fields, "signed rational", reader, key);
    addNumbers(fields, reader, key);
    addElements<std::uint32_t>(fields, "numbers", reader, key);
    addElements<std::int16_t>(fields, "16-bit numbers", reader, key);
    addElements<std::pair<std::uint32_t, std::uint32_t>>(fields, "rationals", reader, key);
    return fields.text();
}

std::string bytesOf(const ExivReader& reader, const char* key) {
    std::int32_t size = 0;
    unsigned char* data = nullptr;
    const bool isThere = reader.getRawExifTag(key, &size, &data);
    const std::vector<int> bytes(data, data + size);
    ::operator delete(static_cast<void*>(data));
    return Fields().add("bytes", std::pair(isThere, bytes)).text();
}

std::string interpretedOf(const ExivReader& reader, const char* key) {
    std::uint32_t number = 0;
    const bool isThere = reader.getInterpretedRawExifTag(key, 0, &number);
    return Fields().add("interpreted", std::pair(isThere, number)).text();
}

std::string xmpOf(const ExivReader& reader) {
    Fields fields;
    for (const ExivReader::XMPData& property : reader.getXMPData()) {
        fields.add("namespace", property.ns)
            .add("name", property.name)
            .add("value", property.value);
    }
    return fields.text();
}

std::string summaryOf(const fs::path& photo) {
    std::string text = "no metadata\n";
    exiv2_wp::createImageMetadata(
        photo, [&](const exiv2_wp::SExivMetadataInfo& info) { text = toText(info); });
    return text;
}

std::string exiv2AnswersAbout(const fs::path& photo) {
    std::string text = summaryOf(photo) + orientationOf(photo) + infoOf(photo) +
                       toText(exiv2_wp::readExiv2Win(photo));
    const ExivReader reader(photo.string());
    for (const char* key : kKeys) {
        text += tagOf(reader, key);
    }
    return text + bytesOf(reader, kKeyOfBytes) + interpretedOf(reader, kInterpretedKey) +
           xmpOf(reader);
}

// ---- previews

// FNV-1a, 64 bits wide.
std::uint64_t hashOf(const unsigned char* bytes, std::uint64_t count) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (std::uint64_t i = 0; i < count; ++i) {
        hash = (hash ^ bytes[i]) * 0x100000001B3U;
    }
    return hash;
}

// The largest there is: photoinfo's report asks for small ones.
std::string previewOf(const fs::path& photo) {
    constexpr int kLarge = 65535;
    Fields fields;
    exiv2_wp::TopBottomOffset offset;
    const auto addBytes = [&](const unsigned char* bytes, std::uint64_t count) {
        fields.add("count", count).add("hash", hashOf(bytes, count));
        return true;
    };
    const bool isRead = exiv2_wp::readExiv2Thumbnail(
        photo, "", kLarge, 1, offset,
        [&](int width, int height, int asked) {
            fields.add("width", width).add("height", height).add("asked", asked);
        },
        [&](int value) { fields.add("notified", value); },
        [&](const unsigned char* bytes, std::uint64_t count, const exiv2_wp::TopBottomOffset&) {
            return addBytes(bytes, count);
        },
        [&](const unsigned char* bytes, std::uint64_t count, int, int,
            const exiv2_wp::TopBottomOffset&, int) { return addBytes(bytes, count); });
    return fields.add("isRead", isRead).add("top", offset.top).add("bottom", offset.bottom).text();
}

// ---- ExifTool, of which the platforms have different versions: what both print alike

constexpr auto kTags =
    "-Make -Model -LensModel -ExposureTime -FNumber -ISO -FocalLength -DateTimeOriginal "
    "-Orientation -Software -Rating -XResolution";

std::string tagsOf(const fs::path& photo) {
    const auto tags = exiftool::readTags(photo, kTags);
    const std::map sorted(tags.begin(), tags.end());
    Fields fields;
    for (const auto& [name, value] : sorted) {
        if (std::string(kTags).find("-" + name) != std::string::npos) {  // not its warnings
            fields.add(name.c_str(), value);
        }
    }
    return fields.text();
}

std::string exiftoolAnswersAbout(const fs::path& photo) {
    return tagsOf(photo) + Fields().add("lens", exiftool::getLensPrettyName(photo)).text();
}

// The photos' metadata in fresh images of each format in turn, read back by both tools.
void writeCopies(const std::vector<fs::path>& photos, const fs::path& folder, std::ostream& out) {
    const std::array<std::pair<const char*, std::string>, 3> formats = {
        std::pair("jpg", test_support::freshJpeg()), std::pair("png", test_support::freshPng()),
        std::pair("tif", test_support::freshTiff())};
    const exiftool::ExportMetadataParameters parameters{300, 240, 2, "Editor 1.0", 3.0F};
    std::vector<fs::path> copies;
    for (const fs::path& photo : photos) {
        const auto& [format, bytes] = formats.at(copies.size() % formats.size());
        copies.push_back(folder / (photo.filename().string() + "." + format));
        std::ofstream(copies.back(), std::ios::binary) << bytes;
        out << copies.back().filename().string() << ' '
            << exiftool::copyMetadata(photo, copies.back(), parameters) << '\n';
    }
    out << "read ahead: " << exiv2_wp::readAhead(copies) << '\n';
    for (const fs::path& copy : copies) {
        out << "==== " << copy.filename().string() << '\n' << tagsOf(copy) << summaryOf(copy);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<fs::path> arguments(argv, argv + argc);
    if (argc < 5) {
        return 2;
    }
    const std::string what = argv[1];
    const bool asksExiftool = what == "exiftool";
    if (!exiv2_wp::initialize(argv[3]) || (asksExiftool && !exiftool::initialize(argv[4]))) {
        return 1;
    }
    const std::vector<fs::path> photos(arguments.begin() + (asksExiftool ? 5 : 4), arguments.end());
    std::ofstream output(arguments[2], std::ios::binary);
    output << "read ahead: " << exiv2_wp::readAhead(photos) << '\n';
    for (const fs::path& photo : photos) {
        output << "==== " << photo.filename().string() << '\n'
               << (asksExiftool         ? exiftoolAnswersAbout(photo)
                   : what == "previews" ? previewOf(photo)
                                        : exiv2AnswersAbout(photo));
    }
    if (asksExiftool) {
        writeCopies(photos, arguments[2].parent_path(), output);
    }
    exiftool::uninitialize();
    return output.flush().good() ? 0 : 1;
}
