#include <cstddef>
#include <future>
#include <iostream>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"

// long_list TOOLS PHOTO...: one line a photo, as a list in the editor shows them. Each question
// waits for two tool runs, so several are asked at the same time.
int main(int argc, char** argv) {
    if (argc < 3 || !exiv2_wp::initialize(argv[1])) {
        return 2;
    }
    const std::vector<const char*> photos(argv + 2, argv + argc);
    constexpr std::size_t kAtATime = 4;
    for (std::size_t first = 0; first < photos.size(); first += kAtATime) {
        std::vector<std::future<exiv2_wp::exivBatchValue>> answers;
        for (std::size_t i = first; i < photos.size() && i < first + kAtATime; ++i) {
            answers.push_back(std::async(
                std::launch::async, [photo = photos[i]] { return exiv2_wp::readExiv2Win(photo); }));
        }
        for (std::future<exiv2_wp::exivBatchValue>& answer : answers) {
            const exiv2_wp::exivBatchValue values = answer.get();
            // What a photo doesn't tell is null.
            std::cout << (values.dateTimeOriginal ? *values.dateTimeOriginal : "no date")
                      << ", ISO ";
            values.isoSpeedRatings ? std::cout << *values.isoSpeedRatings : std::cout << "unknown";
            std::cout << '\n';
        }
    }
}
