// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/made_photo.h"

#include <initializer_list>
#include <ostream>
#include <span>
#include <string_view>

namespace exiv2_tool {
namespace {

void append(Bytes& bytes, std::initializer_list<unsigned> more) {
    for (const unsigned byte : more) {
        bytes.push_back(static_cast<std::uint8_t>(byte));
    }
}

/// A Huffman table of one code, the bit 0, for the value 0.
void appendHuffmanTable(Bytes& bytes, unsigned kindAndNumber) {
    append(bytes, {0xFF, 0xC4, 0, 20, kindAndNumber, 1});
    bytes.insert(bytes.end(), 16, 0);  // no code of 2 to 16 bits; then the value
}

std::string base64(const Bytes& bytes) {
    constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = i; k < i + 3; ++k) {
            group = group << 8U | (k < bytes.size() ? bytes[k] : 0U);
        }
        for (unsigned shift = 24; shift > 0;) {
            shift -= 6;
            text += kDigits[group >> shift & 63U];
        }
    }
    for (std::size_t i = 0; i < (3 - bytes.size() % 3) % 3; ++i) {
        text[text.size() - 1 - i] = '=';
    }
    return text;
}

void addLarger(Exiv2::XmpData& properties, const Bytes& preview) {
    Exiv2::XmpTextValue list;
    list.setXmpArrayType(Exiv2::XmpValue::xaAlt);
    properties.add(Exiv2::XmpKey("Xmp.xmp.Thumbnails"), &list);
    const std::string item = "Xmp.xmp.Thumbnails[1]/xmpGImg:";
    properties[item + "format"] = std::string("JPEG");
    properties[item + "width"] = std::string("640");
    properties[item + "height"] = std::string("640");
    properties[item + "image"] = base64(preview);
}

std::string fileOf(Exiv2::Image& image) {
    image.writeMetadata();
    Exiv2::BasicIo& file = image.io();
    file.open();
    Bytes bytes(file.size());
    file.read(bytes.data(), static_cast<MemorySize>(bytes.size()));
    return {bytes.begin(), bytes.end()};
}

template <typename Change>
std::string changed(const std::string& image, const Change& change) {
    const Bytes bytes(image.begin(), image.end());
    const ImagePointer opened = openImage(bytes);
    opened->readMetadata();
    change(*opened);
    return fileOf(*opened);
}

}  // namespace

void PrintTo(const PixelSize& size, std::ostream* stream) {
    *stream << size.width << " x " << size.height;
}

Bytes makeJpeg(PixelSize size) {
    Bytes bytes;
    append(bytes, {0xFF, 0xD8});            // start of image
    append(bytes, {0xFF, 0xDB, 0, 67, 0});  // one quantisation table, all ones
    bytes.insert(bytes.end(), 64, 1);
    append(bytes, {0xFF, 0xC0, 0, 11, 8, size.height >> 8U, size.height & 255U, size.width >> 8U,
                   size.width & 255U, 1, 1, 0x11, 0});
    appendHuffmanTable(bytes, 0x00);
    appendHuffmanTable(bytes, 0x10);
    append(bytes, {0xFF, 0xDA, 0, 8, 1, 1, 0, 0, 63, 0});
    // Each block of 8 by 8 is the bits 00: no change of brightness, no detail.
    const std::size_t blocks = std::size_t{(size.width + 7) / 8} * ((size.height + 7) / 8);
    bytes.insert(bytes.end(), blocks / 4, 0);
    if (blocks % 4 != 0) {
        append(bytes, {0xFFU >> (blocks % 4 * 2)});  // the rest of a byte is ones
    }
    append(bytes, {0xFF, 0xD9});
    return bytes;
}

std::string photoBytes(const PhotoContents& contents) {
    const Bytes picture = makeJpeg({64, 48});
    const ImagePointer image = openImage(picture);
    image->readMetadata();
    Exiv2::ExifData& tags = image->exifData();
    tags["Exif.Image.Make"] = std::string("Camera");
    for (const auto& [key, value] : contents.tags) {
        tags[key] = value;
    }
    if (!contents.thumbnail.empty()) {
        Exiv2::ExifThumb(tags).setJpegThumbnail(contents.thumbnail.data(),
                                                static_cast<long>(contents.thumbnail.size()));
    }
    if (!contents.larger.empty()) {
        addLarger(image->xmpData(), contents.larger);
    }
    return fileOf(*image);
}

std::string withEntry(const std::string& image, const std::string& key, const std::string& value) {
    return changed(image, [&](Exiv2::Image& opened) {
        if (key.starts_with("Xmp.")) {
            opened.xmpData()[key] = value;
        } else {
            opened.exifData()[key] = value;
        }
    });
}

std::string withEntry(const std::string& image, const std::string& key, const Exiv2::Value& value) {
    return changed(
        image, [&](Exiv2::Image& opened) { opened.exifData().add(Exiv2::ExifKey(key), &value); });
}

}  // namespace exiv2_tool
