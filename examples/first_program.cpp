#include <iostream>

#include "exiv2_wrapper/exiv2_wrapper.h"

int main(int argc, char** argv) {  // the folder of exiv2.exe, then a photo
    if (argc < 3 || !exiv2_wp::initialize(argv[1])) {
        return 1;
    }
    exiv2_wp::createImageMetadata(argv[2], [](const exiv2_wp::SExivMetadataInfo& photo) {
        std::cout << photo.cameraModel << ", f/" << photo.fNumber << ", ISO " << photo.iso << '\n';
    });
}
