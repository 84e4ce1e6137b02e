#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "bare_run.h"
#include "comparison.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "tool_folder.h"

// Our exiv2.exe against the stock one, which is that of the PATH.

namespace {

using namespace benchmarks;

namespace fs = std::filesystem;

const std::string& stockTool() {
    static const std::string tool = findProgram("exiv2");
    return tool;
}

// A photo without metadata makes a tool fail, which is its answer.
void runTwice(const std::string& tool, const fs::path& photo) {
    std::string output;
    runBare({tool, "-PXEkycv", "-q", photo}, output);
    runBare({tool, "pr", photo}, output);
}

// Both read the same photo, from the system's memory.
void compareTwoRuns(benchmark::State& state, const fs::path& photo) {
    compare(
        state, {.reference = "by the stock tool", .atMost = 0.3}, 1,
        [&] { runTwice(OUR_EXIV2, photo); }, [&] { runTwice(stockTool(), photo); });
}

void sample(benchmark::State& state) {
    compareTwoRuns(state, SAMPLE_PHOTO);
}

fs::path realPhoto() {
    fs::path photo = fs::path(environmentOr("EXIV2_WRAPPER_PHOTOS", "")) / "Canon1DmkIII.jpg";
    if (!fs::exists(photo)) {
        giveUp("no " + photo.string());
    }
    return photo;
}

void canon(benchmark::State& state) {
    compareTwoRuns(state, realPhoto());
}

// The program with its libraries, without a photo.
void start(benchmark::State& state) {
    std::string output;
    compare(
        state, {.reference = "of the stock tool"}, 1,
        [&] {
            runBare({OUR_EXIV2, "--version"}, output);
        },
        [&] {
            runBare({stockTool(), "--version"}, output);
        });
}

/// A raw file as large as those of today's cameras: a small one, and pixels behind it.
class LargeRawFile {
public:
    LargeRawFile() {
        constexpr std::uintmax_t kSize = 30'000'000;
        fs::copy_file(realPhoto().parent_path() / "Nikon.nef", path());
        fs::resize_file(path(), kSize);
    }
    [[nodiscard]] fs::path path() const { return folder_.path() / "large.nef"; }

private:
    ToolFolder folder_{OUR_EXIV2, "exiv2.exe"};
};

void largeRawFile(benchmark::State& state) {
    static const LargeRawFile file;
    std::string output;
    compare(
        state, {.reference = "by the stock tool", .atMost = 0.3}, 1,
        [&] {
            runBare({OUR_EXIV2, "-PXEkycv", "-q", file.path()}, output);
        },
        [&] {
            runBare({stockTool(), "-PXEkycv", "-q", file.path()}, output);
        });
}

/// Our tool as the library's, with photos of its own for the cache.
ToolFolder& ourFolder() {
    static ToolFolder folder(OUR_EXIV2, "exiv2.exe", kMorePhotosThanAreKept);
    static const bool isReady = exiv2_wp::initialize(folder.path());
    if (!isReady) {
        giveUp("our exiv2.exe doesn't run");
    }
    return folder;
}

void uncachedSummary(benchmark::State& state) {
    compare(
        state, {.reference = "two bare runs of the stock tool", .atMost = 0.33}, 1,
        [] { readSummary(ourFolder().nextPhoto()); },
        [] { runTwice(stockTool(), ourFolder().nextPhoto()); });
}

/// 300 links to the real photos' copies.
struct ScannedFolder {
    static constexpr std::size_t kPhotos = 300;

    ScannedFolder() {
        fs::create_directory(folder);
        std::vector<fs::path> originals;
        for (const auto& entry : fs::directory_iterator(realPhoto().parent_path())) {
            if (entry.path().extension() != ".md") {
                originals.push_back(entry.path());
            }
        }
        for (std::size_t i = 0; i < kPhotos; ++i) {
            const fs::path& original = originals[i % originals.size()];
            photos.push_back(folder / (std::to_string(i) + '-' + original.filename().string()));
            fs::copy_file(original, photos.back());
        }
    }

    ToolFolder tool{OUR_EXIV2, "exiv2.exe"};
    fs::path folder = tool.path() / "photos";
    std::vector<fs::path> photos;
};

void scan(benchmark::State& state) {
    static const ScannedFolder scanned;
    compare(
        state, {.reference = "a loop of the stock tool's two runs", .timesFaster = 5}, 1,
        [] {
            std::string output;
            if (!runBare({PHOTOINFO, "scan", "--jobs", "2", "--tools", scanned.tool.path(),
                          scanned.folder},
                         output)) {
                giveUp("photoinfo scan fails");
            }
        },
        [] {
            for (const fs::path& photo : scanned.photos) {
                runTwice(stockTool(), photo);
            }
        });
}

BENCHMARK_ROW(sample, "our two tool runs, the sample photo", 500);
BENCHMARK_ROW(canon, "our two tool runs, Canon1DmkIII.jpg", 500);
BENCHMARK_ROW(start, "our tool's start", 500);
BENCHMARK_ROW(largeRawFile, "our run on a raw file of 30 MB", 300);
BENCHMARK_ROW(uncachedSummary, "createImageMetadata, uncached, with our tool", 500);
BENCHMARK_ROW(scan, "photoinfo scan of 300 photos, two jobs, our tool", 7);

}  // namespace

BENCHMARK_MAIN();
