#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <string>
#include <vector>

#include "bare_tool.h"
#include "comparison.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "tool_folder.h"

// What a list that is read ahead costs, by the exiv2.exe of this project or the one that the
// environment variable EXIV2_TOOL names, against the stock tool and exiftool.

namespace {

using namespace benchmarks;

namespace fs = std::filesystem;

using Photos = std::vector<fs::path>;

constexpr std::size_t kFiles = 160;

// Half a list. The other one is the same, so that two threads have the same to do.
Photos halfList() {
    const Photos originals = photos();
    Photos half;
    for (std::size_t i = 0; i < kFiles / 2; ++i) {
        half.push_back(originals[i % originals.size()]);
    }
    return half;
}

struct Lists {
    // More than the cache keeps, so that a list is forgotten before its next turn.
    static constexpr std::size_t kLists = 4;
    static constexpr std::size_t kScanned = 300;

    ToolFolder own{ownTool(), "exiv2.exe"};
    ToolFolder scanned{ownTool(), "exiv2.exe"};
    Photos files = own.makePhotos(kLists * kFiles, halfList());

    Lists() {
        (void)scanned.makePhotos(kScanned, photos());
        if (!exiv2_wp::initialize(own.path())) {
            giveUp("no exiv2.exe of our own; EXIV2_TOOL names one");
        }
    }

    Photos next() {
        const auto first = files.begin() + static_cast<std::ptrdiff_t>(turn_++ % kLists * kFiles);
        return {first, first + kFiles};
    }

private:
    static fs::path ownTool() {
        const char* const tool = std::getenv("EXIV2_TOOL");
        return tool == nullptr ? EXIV2_TOOL : tool;
    }

    std::size_t turn_ = 0;
};

Lists& lists() {
    static Lists instance;
    return instance;
}

void readAhead(const Photos& photos) {
    if (exiv2_wp::readAhead(photos) != photos.size()) {
        giveUp("not all files are known");
    }
}

// A photo without metadata makes a tool fail, which is its answer.
void runStockForEach(const Photos& photos) {
    for (const fs::path& photo : photos) {
        runBare({EXIV2, "-PXEkycv", "-q", photo});
        runBare({EXIV2, "pr", photo});
    }
}

void runStockOnce(const Photos& photos) {
    std::vector<std::string> arguments = {EXIV2, "-PXEkycv", "-q"};
    arguments.insert(arguments.end(), photos.begin(), photos.end());
    runBare(arguments);
}

void oneByOne(benchmark::State& state) {
    const Photos list = lists().next();
    compare(
        state, {.reference = "the two runs of the stock tool for each, bare", .atMost = 0.08}, 1,
        [] { readAhead(lists().next()); }, [&] { runStockForEach(list); });
}

void allAtOnce(benchmark::State& state) {
    const Photos list = lists().next();
    compare(
        state, {.reference = "one run of the stock tool, entries alone", .atMost = 1.2}, 1,
        [] { readAhead(lists().next()); }, [&] { runStockOnce(list); });
}

void twoThreads(benchmark::State& state) {
    const auto onTwoThreads = [] {
        const Photos list = lists().next();
        const auto middle = list.begin() + kFiles / 2;
        const auto other = std::async(std::launch::async, [&] {
            readAhead({list.begin(), middle});
        });
        readAhead({middle, list.end()});
    };
    compare(state, {.reference = "one thread", .timesFaster = 1.7}, 1, onTwoThreads,
            [] { readAhead(lists().next()); });
}

void scan(benchmark::State& state) {
    const std::string tags =
        "-ISO -ExposureTime -FocalLength -FNumber -FocalLengthIn35mmFormat -ExposureCompensation "
        "-BitsPerSample -Orientation -MeteringMode -LightSource -WhiteBalance -Make -Model "
        "-LensMake -LensModel -LensInfo -DateTimeOriginal -Rating -LensID";
    std::vector<std::string> exiftool = {EXIFTOOL, "-csv", "-r"};
    for (std::size_t begin = 0; begin < tags.size();) {
        const std::size_t end = std::min(tags.find(' ', begin), tags.size());
        exiftool.push_back(tags.substr(begin, end - begin));
        begin = end + 1;
    }
    exiftool.push_back(lists().scanned.path());
    const std::vector<std::string> photoinfo = {PHOTOINFO,
                                                "scan",
                                                "--csv",
                                                "--jobs",
                                                "2",
                                                "--tools",
                                                lists().scanned.path(),
                                                lists().scanned.path()};
    compare(
        state, {.reference = "exiftool -csv -r, the same columns", .timesFaster = 8}, 1,
        [&] {
            if (runBare(photoinfo).empty()) {
                giveUp("photoinfo scan fails");
            }
        },
        [&] { runBare(exiftool); });
}

// A line of /proc/self/status, in bytes.
double memory(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":")) {
            constexpr double kKilobyte = 1024;
            return std::stod(line.substr(name.size() + 1)) * kKilobyte;
        }
    }
    giveUp("no " + name);
}

void peakMemory(benchmark::State& state) {
    measure(state, {.limit = 4e6, .unit = "B"}, [] {
        const Photos list = lists().next();
        std::ofstream("/proc/self/clear_refs") << "5";  // the peak is now what is resident
        readAhead(list);
        const double peak = memory("VmHWM");
        malloc_trim(0);  // what is left is the records
        return peak - memory("VmRSS");
    });
}

BENCHMARK_ROW(oneByOne, "readAhead of 160 files", 5);
BENCHMARK_ROW(allAtOnce, "readAhead of 160 files, at once", 15);
BENCHMARK_ROW(twoThreads, "readAhead of 160 files on two threads", 15);
BENCHMARK_ROW(scan, "photoinfo scan of 300 photos, reading ahead", 5);
BENCHMARK_ROW(peakMemory, "readAhead of 160 files, memory beyond the records", 15);

}  // namespace

BENCHMARK_MAIN();
