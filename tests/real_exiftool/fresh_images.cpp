#include "real_exiftool/fresh_images.h"

#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace test_support {

namespace {

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) {
        text += static_cast<char>(value);
    }
    return text;
}

std::string bigEndian(std::uint32_t value, int size) {
    std::string text;
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) {
        text += static_cast<char>((value >> shift) & 0xFFU);
    }
    return text;
}

std::string littleEndian(std::uint32_t value, int size) {
    const std::string big = bigEndian(value, size);
    return {big.rbegin(), big.rend()};
}

// ---- JPEG

std::string segment(int marker, const std::string& content) {
    return bytes({0xFF, marker}) + bigEndian(static_cast<std::uint32_t>(content.size()) + 2, 2) +
           content;
}

// A table with one code, of one bit, for the symbol 0.
std::string huffmanTable(int tableClass) {
    return segment(0xC4, bytes({tableClass << 4, 1}) + std::string(15, '\0') + bytes({0}));
}

// ---- PNG

std::uint32_t crc32(std::string_view text) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char c : text) {
        crc ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return ~crc;
}

std::string chunk(const std::string& type, const std::string& content) {
    return bigEndian(static_cast<std::uint32_t>(content.size()), 4) + type + content +
           bigEndian(crc32(type + content), 4);
}

// ---- TIFF

std::string entry(std::uint32_t tag, std::uint32_t type, std::uint32_t value) {
    return littleEndian(tag, 2) + littleEndian(type, 2) + littleEndian(1, 4) +
           littleEndian(value, 4);
}

}  // namespace

// One grey block of 8 by 8 pixels.
std::string freshJpeg() {
    const std::string quantisation = bytes({0}) + std::string(64, '\x01');
    const std::string frame = bytes({8, 0, 8, 0, 8, 1, 1, 0x11, 0});
    const std::string scan = bytes({1, 1, 0, 0, 63, 0});
    return bytes({0xFF, 0xD8}) + segment(0xDB, quantisation) + segment(0xC0, frame) +
           huffmanTable(0) + huffmanTable(1) + segment(0xDA, scan) + bytes({0x3F, 0xFF, 0xD9});
}

// One black pixel, in a stored block.
std::string freshPng() {
    const std::string header = bigEndian(1, 4) + bigEndian(1, 4) + bytes({8, 0, 0, 0, 0});
    const std::string pixels =
        bytes({0x78, 0x01, 0x01, 2, 0, 0xFD, 0xFF, 0, 0, 0x00, 0x02, 0x00, 0x01});
    return bytes({0x89, 'P', 'N', 'G', 13, 10, 26, 10}) + chunk("IHDR", header) +
           chunk("IDAT", pixels) + chunk("IEND", "");
}

// One black pixel, uncompressed, behind its directory.
std::string freshTiff() {
    constexpr std::uint32_t kShort = 3;
    constexpr std::uint32_t kLong = 4;
    constexpr std::uint32_t kDirectory = 8;
    constexpr std::uint32_t kEntries = 9;
    constexpr std::uint32_t kPixels = kDirectory + 2 + 12 * kEntries + 4;
    return "II" + littleEndian(42, 2) + littleEndian(kDirectory, 4) + littleEndian(kEntries, 2) +
           entry(256, kShort, 1) + entry(257, kShort, 1) + entry(258, kShort, 8) +
           entry(259, kShort, 1) + entry(262, kShort, 1) + entry(273, kLong, kPixels) +
           entry(277, kShort, 1) + entry(278, kShort, 1) + entry(279, kLong, 1) +
           littleEndian(0, 4) + bytes({0});
}

}  // namespace test_support
