#include <iostream>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "vesk_logger/vesk_logger.h"

// editor TOOLS PHOTO: shows the orientation of a photo. What the library has to say goes into the
// editor's own log.
int main(int argc, char** argv) {
    if (argc != 3 || !exiv2_wp::initialize(argv[1])) {
        vesk::LOG(vesk::__vesklog() << "photos can't be read");
        return 1;
    }
    exiv2_wp::readExiv2Orientation(
        argv[2], [](int orientation) { std::cout << "Exif orientation " << orientation << '\n'; });
}
