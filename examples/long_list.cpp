#include <cstddef>
#include <filesystem>
#include <iostream>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"

// long_list TOOLS PHOTO...: one line a photo, as a list in the editor shows them. The list is read
// ahead as far as it goes at a time, so that the questions about those photos wait for no tool.
int main(int argc, char** argv) {
    if (argc < 3 || !exiv2_wp::initialize(argv[1])) {
        return 2;
    }
    std::vector<std::filesystem::path> photos(argv + 2, argv + argc);
    while (!photos.empty()) {
        // A photo that can't be read ahead is asked about all the same, and the list goes on.
        const std::size_t known = exiv2_wp::readAhead(photos);
        const auto rest = photos.begin() + static_cast<std::ptrdiff_t>(known > 0 ? known : 1);
        for (auto photo = photos.begin(); photo != rest; ++photo) {
            const exiv2_wp::exivBatchValue values = exiv2_wp::readExiv2Win(*photo);
            // What a photo doesn't tell is null.
            std::cout << (values.dateTimeOriginal ? *values.dateTimeOriginal : "no date")
                      << ", ISO ";
            values.isoSpeedRatings ? std::cout << *values.isoSpeedRatings : std::cout << "unknown";
            std::cout << '\n';
        }
        photos.erase(photos.begin(), rest);
    }
}
