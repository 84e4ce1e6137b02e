// SPDX-License-Identifier: GPL-2.0-or-later
#include "companion/made_photo.h"

#include <exiv2/exiv2.hpp>
#include <fstream>
#include <initializer_list>
#include <ostream>
#include <string_view>

namespace exiv2_companion {

void PrintTo(const PixelSize& size, std::ostream* stream) {
    *stream << size.width << " x " << size.height;
}

}  // namespace exiv2_companion

namespace companion_tests {
namespace {

using exiv2_companion::PixelSize;

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

}  // namespace

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

void makePhoto(const std::filesystem::path& file, const PhotoContents& contents) {
    const Bytes picture = makeJpeg({64, 48});
    const void* const bytes = picture.data();
    std::ofstream(file, std::ios::binary)
        .write(static_cast<const char*>(bytes), static_cast<std::streamsize>(picture.size()));
    const auto image = Exiv2::ImageFactory::open(file.native());
    image->readMetadata();
    Exiv2::ExifData& tags = image->exifData();
    tags["Exif.Image.Make"] = std::string("Camera");
    if (!contents.lens.empty()) {
        tags["Exif.Photo.LensModel"] = contents.lens;
    }
    if (!contents.thumbnail.empty()) {
        Exiv2::ExifThumb(tags).setJpegThumbnail(contents.thumbnail.data(),
                                                static_cast<long>(contents.thumbnail.size()));
    }
    if (!contents.larger.empty()) {
        addLarger(image->xmpData(), contents.larger);
    }
    image->writeMetadata();
}

}  // namespace companion_tests
