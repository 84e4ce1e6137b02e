#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"

// preview TOOLS PHOTO FILE: writes a preview of at least 640 pixels into FILE.
int main(int argc, char** argv) {
    if (argc != 4 || !exiv2_wp::initialize(argv[1])) {
        return 2;
    }
    // The bytes live only during the callback, so it is the place to decode or to copy them.
    const auto save = [&](const unsigned char* bytes, std::uint64_t count) {
        std::ofstream file(argv[3], std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(count));
        return file.good();
    };
    exiv2_wp::TopBottomOffset offset;
    const bool isSaved = exiv2_wp::readExiv2Thumbnail(
        argv[2], "", 640, 480, offset,
        [](int width, int height, int /*sizeAskedFor*/) {
            std::cout << width << " x " << height << '\n';
        },
        [](int /*value*/) {},
        [&](const unsigned char* bytes, std::uint64_t count, const exiv2_wp::TopBottomOffset&) {
            return save(bytes, count);
        },
        [&](const unsigned char* bytes, std::uint64_t count, int /*width*/, int /*rows*/,
            const exiv2_wp::TopBottomOffset&, int /*sizeAskedFor*/) { return save(bytes, count); });
    return isSaved ? 0 : 1;
}
