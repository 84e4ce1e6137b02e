// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/entries.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include "exiv2/value_text.h"

namespace exiv2_tool {
namespace {

constexpr std::size_t kKeyWidth = 44;
constexpr std::size_t kTypeWidth = 9;
constexpr std::size_t kCountWidth = 3;

void appendLeft(std::string& output, std::string_view text, std::size_t width) {
    output += text;
    output.append(width - std::min(width, text.size()), ' ');
}

void appendRight(std::string& output, std::int64_t number, std::size_t width) {
    const std::size_t before = output.size();
    appendNumber(output, number);
    output.insert(before, width - std::min(width, output.size() - before), ' ');
}

void appendType(std::string& output, const Exiv2::Metadatum& entry) {
    if (const char* const name = entry.typeName()) {
        appendLeft(output, name, kTypeWidth);
        return;
    }
    char number[16];
    (void)std::snprintf(number, sizeof number, "0x%04x", static_cast<unsigned>(entry.typeId()));
    appendLeft(output, number, kTypeWidth);
}

// The elements of a signed byte are stored unsigned.
void appendSignedBytes(std::string& output, const Exiv2::Value& value) {
    constexpr std::int64_t kValues = 256;
    for (MemorySize i = 0; i < value.count(); ++i) {
        const std::int64_t byte = numberAt(value, i);
        output.append(i > 0 ? 1 : 0, ' ');
        appendNumber(output, byte < kValues / 2 ? byte : byte - kValues);
    }
}

void printEntry(std::string& output, const Exiv2::Metadatum& entry, std::string_view key) {
    appendLeft(output, key, kKeyWidth);
    output += ' ';
    appendType(output, entry);
    output += ' ';
    appendRight(output, static_cast<std::int64_t>(entry.count()), kCountWidth);
    if (entry.size() > 0) {
        output += "  ";
        if (entry.typeId() == Exiv2::signedByte) {
            appendSignedBytes(output, entry.value());
        } else {
            appendValue(output, entry.value());
        }
    }
    output += '\n';
}

bool isMakerNoteBlob(std::string_view key) {
    return key == "Exif.Photo.MakerNote" || key == "Exif.Image.MakerNote";
}

// A tag without a name, which the stock tool keeps to itself: "Exif.Canon.0x0000".
bool isNameless(std::string_view key) {
    const std::size_t name = key.find('.', key.find('.') + 1) + 1;
    return key.substr(name).starts_with("0x");
}

/// Calls `take` for each entry of this key, whose kinds come in the stock tool's order, until it
/// returns false. Throws when there is no entry.
template <typename Take>
void forEachEntry(const Exiv2::Image& image, std::string_view key, const Take& take) {
    bool isFound = false;
    bool isWanted = true;
    const auto search = [&](const auto& entries) {
        for (auto entry = entries.begin(); isWanted && entry != entries.end(); ++entry) {
            if (entry->key() == key && !isNameless(key)) {
                isFound = true;
                isWanted = take(*entry);
            }
        }
    };
    search(image.exifData());
    search(image.iptcData());
    search(image.xmpData());
    if (!isFound) {
        throw std::invalid_argument("there is no " + std::string(key));
    }
}

}  // namespace

void printAll(std::string& output, const Exiv2::Image& image) {
    for (const Exiv2::Exifdatum& entry : image.exifData()) {
        const std::string key = entry.key();
        if (!isMakerNoteBlob(key) && !isNameless(key)) {
            printEntry(output, entry, key);
        }
    }
    for (const Exiv2::Xmpdatum& entry : image.xmpData()) {
        const std::string key = entry.key();
        if (!isNameless(key)) {
            printEntry(output, entry, key);
        }
    }
}

void printInterpreted(std::string& output, const Exiv2::Image& image, std::string_view key) {
    forEachEntry(image, key, [&](const Exiv2::Metadatum& entry) {
        appendLeft(output, key, kKeyWidth);
        output += "  ";
        output += entry.print(&image.exifData());
        output += '\n';
        return true;
    });
}

void printBytes(std::string& output, const Exiv2::Image& image, std::string_view key) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    forEachEntry(image, key, [&](const Exiv2::Metadatum& entry) {
        std::vector<Exiv2::byte> bytes(static_cast<std::size_t>(entry.size()));
        entry.copy(bytes.data(), image.byteOrder());
        output += key;
        for (const unsigned byte : bytes) {
            output += ' ';
            output += kDigits[byte >> 4U];
            output += kDigits[byte & 15U];
        }
        output += '\n';
        return false;
    });
}

}  // namespace exiv2_tool
