#include <cstdint>
#include <filesystem>
#include <functional>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "comparison.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "tool_folder.h"

// What questions about a file that is known already cost.

namespace {

using namespace benchmarks;

namespace fs = std::filesystem;

// A photo that is known to the cache, among as many as it keeps.
const fs::path& knownPhoto() {
    static const fs::path photo = [] {
        const fs::path* last = nullptr;
        for (int i = 0; i < 150; ++i) {
            last = &nextPhoto();
            readSummary(*last);
        }
        return *last;
    }();
    return photo;
}

template <typename Action>
void onOneThread(benchmark::State& state, const Action& action) {
    constexpr int kCalls = 1000;
    measure(state, {.limit = 2000}, [&] { return nanosecondsOf(kCalls, action); });
}

// Sixteen threads share the calls, so what is measured is the total throughput.
template <typename Action>
void onSixteenThreads(benchmark::State& state, const Action& action) {
    constexpr int kThreads = 16;
    constexpr int kCalls = 40'000;  // each
    measure(state, {.limit = 3000}, [&] {
        std::latch begin(kThreads + 1);
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&] {
                begin.arrive_and_wait();
                for (int call = 0; call < kCalls; ++call) {
                    action();
                }
            });
        }
        return nanosecondsOf(1,
                             [&] {
                                 begin.arrive_and_wait();
                                 for (std::thread& thread : threads) {
                                     thread.join();
                                 }
                             }) /
               (kThreads * kCalls);
    });
}

const std::function<void(const exiv2_wp::SExivMetadataInfo&)> kOnSummary = [](const auto& info) {
    benchmark::DoNotOptimize(&info);
};
const std::function<void(int)> kOnOrientation = [](int value) { benchmark::DoNotOptimize(value); };

void readKnownSummary() {
    exiv2_wp::createImageMetadata(knownPhoto(), kOnSummary);
}

void readKnownOrientation() {
    exiv2_wp::readExiv2Orientation(knownPhoto(), kOnOrientation);
}

void summary(benchmark::State& state) {
    onOneThread(state, readKnownSummary);
}

void orientation(benchmark::State& state) {
    onOneThread(state, readKnownOrientation);
}

void batch(benchmark::State& state) {
    onOneThread(state, [] { benchmark::DoNotOptimize(exiv2_wp::readExiv2Win(knownPhoto())); });
}

void lensAndFocus(benchmark::State& state) {
    int tags = 0;
    const std::function<void(const exiv2_wp::SLensInfo&)> onLens = [](const auto& info) {
        benchmark::DoNotOptimize(&info);
    };
    const std::function<void(const exiv2_wp::SMetadataExiv&)> onMetadata = [](const auto& info) {
        benchmark::DoNotOptimize(&info);
    };
    const std::function<void()> onTag = [&] { ++tags; };
    onOneThread(state, [&] {
        exiv2_wp::readExiv2Info(knownPhoto(), "Canon", "EOS 40D", onLens, onMetadata, onTag);
    });
}

void oneTag(benchmark::State& state) {
    const std::string photo = knownPhoto();
    std::uint32_t number = 0;
    onOneThread(state, [&] {
        const exiv2_wp::ExivReader reader(photo);
        benchmark::DoNotOptimize(reader.getRawExifTag("Exif.Image.Orientation", 0, &number));
    });
}

void summaryOnThreads(benchmark::State& state) {
    onSixteenThreads(state, readKnownSummary);
}

void orientationOnThreads(benchmark::State& state) {
    onSixteenThreads(state, readKnownOrientation);
}

BENCHMARK_ROW(summary, "createImageMetadata, cached", 300);
BENCHMARK_ROW(orientation, "readExiv2Orientation, cached", 300);
BENCHMARK_ROW(batch, "readExiv2Win, cached", 300);
BENCHMARK_ROW(lensAndFocus, "readExiv2Info, cached", 300);
BENCHMARK_ROW(oneTag, "an ExivReader and a getter, cached", 300);
BENCHMARK_ROW(summaryOnThreads, "createImageMetadata, cached, 16 threads", 15);
BENCHMARK_ROW(orientationOnThreads, "readExiv2Orientation, cached, 16 threads", 15);

}  // namespace

BENCHMARK_MAIN();
