#include <functional>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

#include "comparison.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "tool_folder.h"

// What questions about a file that is known already cost.

namespace {

using namespace benchmarks;

namespace fs = std::filesystem;

constexpr int kCalls = 1000;

// A photo that is known to the cache, among as many as it keeps.
const fs::path& knownPhoto() {
    static const fs::path photo = [] {
        for (int i = 0; i < 150; ++i) {
            readSummary(exiv2Folder().nextPhoto());
        }
        const fs::path last = exiv2Folder().nextPhoto();
        readSummary(last);
        return last;
    }();
    return photo;
}

// Plain tables of the size of the cache and of a record, each with the keys that are asked for.
using PlainTable = std::unordered_map<std::string, int>;

PlainTable tableOf(const std::string& name, int size) {
    PlainTable table;
    for (int i = 0; i < size; ++i) {
        table.emplace(name + std::to_string(i), i);
    }
    table.emplace(name, 0);
    return table;
}

// Each file costs a search by its path, each tag one by its key.
void compareReader(benchmark::State& state, int tags, const std::function<void()>& reader) {
    const std::string path = knownPhoto();
    const std::string key = "Exif.Photo.ExposureTime";
    const PlainTable files = tableOf(path, 200);
    const PlainTable keys = tableOf(key, 180);
    const std::string reference =
        std::to_string(1 + tags) + " plain hash look-ups, the file's and the tags'";
    compare(state, {.reference = reference, .atMost = 5}, kCalls, reader, [&] {
        benchmark::DoNotOptimize(files.find(path));
        for (int i = 0; i < tags; ++i) {
            benchmark::DoNotOptimize(keys.find(key));
        }
    });
}

void summary(benchmark::State& state) {
    const fs::path photo = knownPhoto();
    exiv2_wp::SExivMetadataInfo known;
    exiv2_wp::createImageMetadata(photo,
                                  [&](const exiv2_wp::SExivMetadataInfo& info) { known = info; });
    const std::string path = photo;
    const PlainTable files = tableOf(path, 200);
    const std::function<void(const exiv2_wp::SExivMetadataInfo&)> callback =
        [](const exiv2_wp::SExivMetadataInfo& info) { benchmark::DoNotOptimize(&info); };
    compare(
        state, {.reference = "two plain hash look-ups and the summary's copy", .limit = 10'000},
        kCalls, [&] { exiv2_wp::createImageMetadata(photo, callback); },
        [&] {
            benchmark::DoNotOptimize(files.find(path));
            benchmark::DoNotOptimize(files.find(path));
            const exiv2_wp::SExivMetadataInfo copy = known;
            callback(copy);
        });
}

void orientation(benchmark::State& state) {
    const fs::path photo = knownPhoto();
    const std::function<void(int)> callback = [](int value) { benchmark::DoNotOptimize(value); };
    compareReader(state, 1, [&] { exiv2_wp::readExiv2Orientation(photo, callback); });
}

void tiffRaw(benchmark::State& state) {
    const fs::path photo = knownPhoto();
    compareReader(state, 1, [&] { benchmark::DoNotOptimize(exiv2_wp::isTiffRaw(photo)); });
}

void batch(benchmark::State& state) {
    const fs::path photo = knownPhoto();
    compareReader(state, 11, [&] { benchmark::DoNotOptimize(exiv2_wp::readExiv2Win(photo)); });
}

// It calls back for each tag, so the reference walks over a table of as many.
void lensAndFocus(benchmark::State& state) {
    const fs::path photo = knownPhoto();
    int tags = 0;
    const std::function<void(const exiv2_wp::SLensInfo&)> onLens = [](const auto& info) {
        benchmark::DoNotOptimize(&info);
    };
    const std::function<void(const exiv2_wp::SMetadataExiv&)> onMetadata = [](const auto& info) {
        benchmark::DoNotOptimize(&info);
    };
    const std::function<void()> onTag = [&] { ++tags; };
    const auto read = [&] {
        exiv2_wp::readExiv2Info(photo, "Canon", "EOS 40D", onLens, onMetadata, onTag);
    };
    read();
    const std::string path = photo;
    const PlainTable files = tableOf(path, 200);
    const PlainTable keys = tableOf("Exif.Photo.ExposureTime", tags - 1);
    compare(
        state,
        {.reference = "plain hash look-up, a walk over the tags with a call each", .atMost = 5},
        kCalls, read,
        [&] {
            benchmark::DoNotOptimize(files.find(path));
            for (const auto& tag : keys) {
                benchmark::DoNotOptimize(&tag);
                onTag();
            }
        },
        std::to_string(keys.size()) + " tags");
}

// It keeps the file's path, which it is given as a text.
void constructor(benchmark::State& state) {
    const std::string photo = knownPhoto();
    const PlainTable files = tableOf(photo, 200);
    compare(
        state, {.reference = "plain hash look-up, a path made of the name", .atMost = 5}, kCalls,
        [&] { const exiv2_wp::ExivReader reader(photo); },
        [&] {
            benchmark::DoNotOptimize(files.find(photo));
            const auto path = std::make_unique<fs::path>(photo);
            benchmark::DoNotOptimize(path.get());
        });
}

// ---- threads

constexpr int kThreads = 16;

// Sixteen threads share the calls, so what is compared is the total throughput.
template <typename Action>
double nanosecondsOnThreads(int calls, const Action& action) {
    std::latch begin(kThreads + 1);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            begin.arrive_and_wait();
            for (int call = 0; call < calls / kThreads; ++call) {
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
           calls;
}

template <typename Action>
void compareThreads(benchmark::State& state, const Action& action) {
    constexpr int kCallsOfAll = 640'000;
    compareTimes(
        state, {.reference = "one thread", .atMost = 1},
        [&] { return nanosecondsOnThreads(kCallsOfAll, action); },
        [&] { return nanosecondsOf(kCallsOfAll, action); });
}

void orientationOnThreads(benchmark::State& state) {
    const fs::path photo = knownPhoto();
    const std::function<void(int)> callback = [](int value) { benchmark::DoNotOptimize(value); };
    compareThreads(state, [&] { exiv2_wp::readExiv2Orientation(photo, callback); });
}

void summaryOnThreads(benchmark::State& state) {
    const fs::path photo = knownPhoto();
    const std::function<void(const exiv2_wp::SExivMetadataInfo&)> callback =
        [](const exiv2_wp::SExivMetadataInfo& info) { benchmark::DoNotOptimize(&info); };
    compareThreads(state, [&] { exiv2_wp::createImageMetadata(photo, callback); });
}

// ---- getters

template <typename Get>
void compareGetter(benchmark::State& state, const std::string& key, const Get& get) {
    const exiv2_wp::ExivReader reader(knownPhoto());
    const PlainTable keys = tableOf(key, 180);
    if (!get(reader, key.c_str())) {
        giveUp("nothing under " + key);
    }
    compare(
        state, {.reference = "plain hash look-up", .atMost = 5, .limit = 200}, kCalls,
        [&] { benchmark::DoNotOptimize(get(reader, key.c_str())); },
        [&] { benchmark::DoNotOptimize(keys.find(key)); });
}

template <typename Element>
void elementGetter(benchmark::State& state) {
    Element element;
    compareGetter(state, "Exif.Photo.ExposureTime", [&](const auto& reader, const char* key) {
        return reader.getRawExifTag(key, 0, element);
    });
}

template <typename Element>
void arrayGetter(benchmark::State& state) {
    Element elements[4];
    compareGetter(state, "Exif.Photo.LensSpecification", [&](const auto& reader, const char* key) {
        return reader.getRawExifTag(key, elements, 4) > 0;
    });
}

void textGetter(benchmark::State& state) {
    std::string text;
    compareGetter(state, "Exif.Image.Model", [&](const auto& reader, const char* key) {
        return reader.getRawExifTag(key, text);
    });
}

void numberGetter(benchmark::State& state) {
    std::uint32_t number = 0;
    compareGetter(state, "Exif.Image.Orientation", [&](const auto& reader, const char* key) {
        return reader.getRawExifTag(key, 0, &number);
    });
}

void xmpProperties(benchmark::State& state) {
    const exiv2_wp::ExivReader reader(knownPhoto());
    const std::vector<exiv2_wp::ExivReader::XMPData> known = reader.getXMPData();
    compare(
        state, {.reference = "the list's copy", .atMost = 5}, 100,
        [&] { benchmark::DoNotOptimize(reader.getXMPData()); },
        [&] {
            std::vector<exiv2_wp::ExivReader::XMPData> copy = known;
            benchmark::DoNotOptimize(copy);
        },
        std::to_string(known.size()) + " properties");
}

using UnsignedPair = std::pair<std::uint32_t, std::uint32_t>;
using SignedPair = std::pair<std::int32_t, std::int32_t>;

BENCHMARK_ROW(summary, "createImageMetadata, cached", 300);
BENCHMARK_ROW(orientation, "readExiv2Orientation, cached", 300);
BENCHMARK_ROW(tiffRaw, "isTiffRaw, cached", 300);
BENCHMARK_ROW(batch, "readExiv2Win, cached", 300);
BENCHMARK_ROW(lensAndFocus, "readExiv2Info, cached", 300);
BENCHMARK_ROW(constructor, "ExivReader's constructor, cached", 300);
BENCHMARK_ROW(orientationOnThreads, "readExiv2Orientation, cached, 16 threads", 15);
BENCHMARK_ROW(summaryOnThreads, "createImageMetadata, cached, 16 threads", 15);
BENCHMARK_ROW(textGetter, "getRawExifTag, text", 300);
BENCHMARK_ROW(elementGetter<UnsignedPair>, "getRawExifTag, unsigned pair", 300);
BENCHMARK_ROW(elementGetter<SignedPair>, "getRawExifTag, signed pair", 300);
BENCHMARK_ROW(numberGetter, "getRawExifTag, number", 300);
BENCHMARK_ROW(arrayGetter<std::uint32_t>, "getRawExifTag, array of numbers", 300);
BENCHMARK_ROW(arrayGetter<std::int16_t>, "getRawExifTag, array of short numbers", 300);
BENCHMARK_ROW(arrayGetter<UnsignedPair>, "getRawExifTag, array of pairs", 300);
BENCHMARK_ROW(xmpProperties, "getXMPData", 300);

}  // namespace

BENCHMARK_MAIN();
