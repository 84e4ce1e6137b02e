#include <cstdint>
#include <iostream>
#include <memory>
#include <new>

#include "exiv2_wrapper/exiv2_wrapper.h"

// Gives a buffer of the library back the way it was made.
struct ScalarDelete {
    void operator()(unsigned char* bytes) const { ::operator delete(static_cast<void*>(bytes)); }
};

// raw_bytes TOOLS PHOTO: tells how large the photo's maker notes are.
int main(int argc, char** argv) {
    if (argc != 3 || !exiv2_wp::initialize(argv[1])) {
        return 2;
    }
    const exiv2_wp::ExivReader reader(argv[2]);
    std::int32_t size = 0;
    unsigned char* data = nullptr;
    if (!reader.getRawExifTag("Exif.Photo.MakerNote", &size, &data)) {
        std::cout << "no maker notes\n";
        return 1;
    }
    const std::unique_ptr<unsigned char, ScalarDelete> bytes(data);
    std::cout << size << " bytes of maker notes, the first is " << int{bytes.get()[0]} << '\n';
}
