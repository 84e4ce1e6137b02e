#include <cstdint>
#include <filesystem>
#include <future>
#include <new>
#include <string>
#include <vector>

#include "bare_tool.h"
#include "comparison.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "tool_folder.h"

// What the library adds to the tool runs that a photo costs.

namespace {

using namespace benchmarks;

namespace fs = std::filesystem;

void uncachedSummary(benchmark::State& state) {
    compare(
        state, {.reference = "the two bare tool runs", .atMost = 1.03}, 1,
        [] { readSummary(nextPhoto()); }, [] { runBareTwice(nextPhoto()); });
}

void rawBytes(benchmark::State& state) {
    const std::string photo = nextPhoto();
    const std::string tool = exiv2Folder().tool();
    const exiv2_wp::ExivReader reader(photo);
    compare(
        state, {.reference = "the bare tool run", .atMost = 1.03}, 1,
        [&] {
            std::int32_t size = 0;
            unsigned char* bytes = nullptr;
            if (!reader.getRawExifTag("Exif.Image.Make", &size, &bytes)) {
                giveUp("no bytes");
            }
            ::operator delete(bytes);
        },
        [&] {
            runBare({tool, "--key", "Exif.Image.Make", "--Print", "kh", photo});
        });
}

constexpr int kFiles = 200;

std::vector<fs::path> takePhotos(int count) {
    std::vector<fs::path> photos;
    for (int i = 0; i < count; ++i) {
        photos.push_back(nextPhoto());
    }
    return photos;
}

void readAll(const std::vector<fs::path>& photos) {
    for (const fs::path& photo : photos) {
        readSummary(photo);
    }
}

void twoThreads(benchmark::State& state) {
    const auto onTwoThreads = [] {
        const std::vector<fs::path> half = takePhotos(kFiles / 2);
        const auto other = std::async(std::launch::async, [&] { readAll(half); });
        readAll(takePhotos(kFiles / 2));
    };
    compare(state, {.reference = "one thread", .timesFaster = 1.85}, 1, onTwoThreads,
            [] { readAll(takePhotos(kFiles)); });
}

BENCHMARK_ROW(uncachedSummary, "createImageMetadata, uncached", 1000);
BENCHMARK_ROW(rawBytes, "getRawExifTag, bytes of a tag", 300);
BENCHMARK_ROW(twoThreads, "200 uncached files on two threads", 5);

}  // namespace

BENCHMARK_MAIN();
