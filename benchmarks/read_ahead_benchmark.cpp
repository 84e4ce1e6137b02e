#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <future>
#include <string>
#include <vector>

#include "bare_run.h"
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

// The sample and whatever the folder holds that the environment variable EXIV2_WRAPPER_PHOTOS
// names.
Photos originals() {
    Photos files = {SAMPLE_PHOTO};
    const std::string folder = environmentOr("EXIV2_WRAPPER_PHOTOS", "");
    if (!folder.empty() && fs::is_directory(folder)) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.is_regular_file() && entry.path().extension() != ".md") {
                files.push_back(entry.path());
            }
        }
    }
    return files;
}

// So many links to the originals' copies, each a photo of its own.
Photos fill(const fs::path& folder, std::size_t count) {
    const Photos files = originals();
    Photos photos;
    fs::create_directory(folder);
    for (std::size_t i = 0; i < count; ++i) {
        const fs::path& original = files[i % files.size()];
        photos.push_back(folder / (std::to_string(i) + "-" + original.filename().string()));
        if (i < files.size()) {
            fs::copy_file(original, photos.back());
        } else {
            fs::create_hard_link(photos[i % files.size()], photos.back());
        }
    }
    return photos;
}

struct Lists {
    // More than the cache keeps, so that a list is forgotten before its next turn.
    static constexpr std::size_t kLists = 4;
    static constexpr std::size_t kScanned = 300;

    ToolFolder own = ToolFolder(environmentOr("EXIV2_TOOL", EXIV2_TOOL), "exiv2.exe");
    ToolFolder stock = ToolFolder(findProgram("exiv2"), "exiv2.exe");
    Photos photos = fill(own.path() / "photos", kLists* kFiles);
    fs::path scanned = own.path() / "scanned";

    Lists() {
        fill(scanned, kScanned);
        if (!exiv2_wp::initialize(own.path())) {
            giveUp("no exiv2.exe of our own; EXIV2_TOOL names one");
        }
    }

    Photos next() {
        const auto first = photos.begin() + static_cast<std::ptrdiff_t>(turn_++ % kLists * kFiles);
        return {first, first + kFiles};
    }

private:
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
    std::string output;
    for (const fs::path& photo : photos) {
        runBare({lists().stock.tool(), "-PXEkycv", "-q", photo}, output);
        runBare({lists().stock.tool(), "pr", photo}, output);
    }
}

void runStockOnce(const Photos& photos) {
    std::vector<std::string> arguments = {lists().stock.tool(), "-PXEkycv", "-q"};
    arguments.insert(arguments.end(), photos.begin(), photos.end());
    std::string output;
    runBare(arguments, output);
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
    std::vector<std::string> exiftool = {findProgram("exiftool"), "-csv", "-r"};
    for (std::size_t begin = 0; begin < tags.size();) {
        const std::size_t end = std::min(tags.find(' ', begin), tags.size());
        exiftool.push_back(tags.substr(begin, end - begin));
        begin = end + 1;
    }
    exiftool.push_back(lists().scanned);
    const std::vector<std::string> photoinfo = {
        PHOTOINFO, "scan", "--csv", "--jobs", "2", "--tools", lists().own.path(), lists().scanned};
    compare(
        state, {.reference = "exiftool -csv -r, the same columns", .timesFaster = 8}, 1,
        [&] {
            std::string output;
            if (!runBare(photoinfo, output)) {
                giveUp("photoinfo scan fails");
            }
        },
        [&] {
            std::string output;
            runBare(exiftool, output);
        });
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
    std::vector<double> peaks;
    for (auto _ : state) {
        const Photos list = lists().next();
        std::ofstream("/proc/self/clear_refs") << "5";  // the peak is now what is resident
        readAhead(list);
        peaks.push_back(memory("VmHWM") - memory("VmRSS"));
        state.SetIterationTime(1e-9);
    }
    report(state, {.limit = 4e6, .unit = "B"}, peaks);
}

BENCHMARK_ROW(oneByOne, "readAhead of 160 files", 5);
BENCHMARK_ROW(allAtOnce, "readAhead of 160 files, at once", 15);
BENCHMARK_ROW(twoThreads, "readAhead of 160 files on two threads", 15);
BENCHMARK_ROW(scan, "photoinfo scan of 300 photos, reading ahead", 5);
BENCHMARK_ROW(peakMemory, "readAhead of 160 files, memory beyond the records", 15);

}  // namespace

BENCHMARK_MAIN();
