#include <filesystem>
#include <iostream>

#include "exiv2_wrapper/exiv2_wrapper.h"

// consumer TOOLS PHOTO: names the camera of a photo and its crop factor, by the exiv2.exe that lies
// in the folder TOOLS.
int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: consumer TOOLS PHOTO\n";
        return 2;
    }
    if (!exiv2_wp::initialize(argv[1])) {
        std::cerr << "no exiv2.exe that works in " << argv[1] << '\n';
        return 1;
    }
    bool hasMetadata = false;
    exiv2_wp::createImageMetadata(argv[2], [&](const exiv2_wp::SExivMetadataInfo& photo) {
        hasMetadata = true;
        std::cout << photo.cameraModel << ", crop factor "
                  << exiv2_wp::getCropFactor("", photo.cameraModel) << '\n';
    });
    return hasMetadata ? 0 : 1;
}
