#include <future>

#include "bare_run.h"
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
        [] { readSummary(exiv2Folder().nextPhoto()); },
        [] { runBareTwice(exiv2Folder().nextPhoto()); });
}

// What two equal things differ by: the accuracy of this machine today.
void bareRunsTwice(benchmark::State& state) {
    const auto run = [] { runBareTwice(exiv2Folder().nextPhoto()); };
    compare(state, {.reference = "the same once more"}, 1, run, run);
}

void rawBytes(benchmark::State& state) {
    const std::string photo = exiv2Folder().nextPhoto().string();
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
            std::string output;
            runBare({tool, "--key", "Exif.Image.Make", "--Print", "kh", photo}, output);
        });
}

constexpr int kFiles = 200;

std::vector<fs::path> takePhotos(int count) {
    std::vector<fs::path> photos;
    for (int i = 0; i < count; ++i) {
        photos.push_back(exiv2Folder().nextPhoto());
    }
    return photos;
}

template <typename Read>
void readAll(const std::vector<fs::path>& photos, const Read& read) {
    for (const fs::path& photo : photos) {
        read(photo);
    }
}

template <typename Read>
void compareTwoThreadsWithOne(benchmark::State& state, const Row& row, const Read& read) {
    const auto onTwoThreads = [&] {
        const std::vector<fs::path> half = takePhotos(kFiles / 2);
        const auto other = std::async(std::launch::async, [&] { readAll(half, read); });
        readAll(takePhotos(kFiles / 2), read);
    };
    compare(state, row, 1, onTwoThreads, [&] { readAll(takePhotos(kFiles), read); });
}

void twoThreads(benchmark::State& state) {
    compareTwoThreadsWithOne(state, {.reference = "one thread", .timesFaster = 1.85}, readSummary);
}

// How much faster two threads can be here at all.
void bareRunsOnTwoThreads(benchmark::State& state) {
    compareTwoThreadsWithOne(state, {.reference = "one thread"}, runBareTwice);
}

BENCHMARK_ROW(uncachedSummary, "createImageMetadata, uncached", 1000);
BENCHMARK_ROW(bareRunsTwice, "the two bare tool runs", 1000);
BENCHMARK_ROW(rawBytes, "getRawExifTag, bytes of a tag", 300);
BENCHMARK_ROW(twoThreads, "200 uncached files on two threads", 5);
BENCHMARK_ROW(bareRunsOnTwoThreads, "200 bare pairs of runs on two threads", 5);

}  // namespace

BENCHMARK_MAIN();
