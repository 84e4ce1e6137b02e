#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "bare_tool.h"
#include "comparison.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "tool_folder.h"

// Our exiv2.exe against the stock one, which is that of the PATH.

namespace {

using namespace benchmarks;

namespace fs = std::filesystem;

// A photo without metadata makes a tool fail, which is its answer.
void runTwice(const std::string& tool, const fs::path& photo) {
    runBare({tool, "-PXEkycv", "-q", photo});
    runBare({tool, "pr", photo});
}

// Both read the same photo, from the system's memory.
void compareTwoRuns(benchmark::State& state, const fs::path& photo) {
    compare(
        state, {.reference = "by the stock tool", .atMost = 0.3}, 1,
        [&] { runTwice(OUR_EXIV2, photo); }, [&] { runTwice(EXIV2, photo); });
}

void sample(benchmark::State& state) {
    compareTwoRuns(state, SAMPLE_PHOTO);
}

// One of the real photos; the sample where they aren't.
fs::path realPhoto(const std::string& name) {
    for (const fs::path& photo : photos()) {
        if (photo.filename() == name) {
            return photo;
        }
    }
    return SAMPLE_PHOTO;
}

void canon(benchmark::State& state) {
    compareTwoRuns(state, realPhoto("Canon1DmkIII.jpg"));
}

// The program with its libraries, without a photo.
void start(benchmark::State& state) {
    compare(
        state, {.reference = "of the stock tool"}, 1,
        [] {
            runBare({OUR_EXIV2, "--version"});
        },
        [] {
            runBare({EXIV2, "--version"});
        });
}

/// A raw file as large as those of today's cameras: a small one, and pixels behind it.
class LargeRawFile {
public:
    LargeRawFile() {
        constexpr std::uintmax_t kSize = 30'000'000;
        fs::copy_file(realPhoto("Nikon.nef"), path());
        fs::resize_file(path(), kSize);
    }
    [[nodiscard]] fs::path path() const { return folder_.path() / "large.nef"; }

private:
    ToolFolder folder_{OUR_EXIV2, "exiv2.exe"};
};

void largeRawFile(benchmark::State& state) {
    static const LargeRawFile file;
    compare(
        state, {.reference = "by the stock tool", .atMost = 0.3}, 1,
        [] {
            runBare({OUR_EXIV2, "-PXEkycv", "-q", file.path()});
        },
        [] {
            runBare({EXIV2, "-PXEkycv", "-q", file.path()});
        });
}

/// Our tool as the library's, and photos of which each is forgotten before its next turn.
class OurFolder {
public:
    OurFolder() {
        if (!exiv2_wp::initialize(folder_.path())) {
            giveUp("our exiv2.exe doesn't run");
        }
    }
    [[nodiscard]] const fs::path& nextPhoto() { return photos_[next_++ % photos_.size()]; }

private:
    ToolFolder folder_{OUR_EXIV2, "exiv2.exe"};
    std::vector<fs::path> photos_ = folder_.makePhotos(512, {SAMPLE_PHOTO});
    std::size_t next_ = 0;
};

void uncachedSummary(benchmark::State& state) {
    static OurFolder folder;
    compare(
        state, {.reference = "two bare runs of the stock tool", .atMost = 0.33}, 1,
        [] { readSummary(folder.nextPhoto()); }, [] { runTwice(EXIV2, folder.nextPhoto()); });
}

void scan(benchmark::State& state) {
    static const ToolFolder folder(OUR_EXIV2, "exiv2.exe");
    static const std::vector<fs::path> scanned = folder.makePhotos(300, photos());
    compare(
        state, {.reference = "a loop of the stock tool's two runs", .timesFaster = 5}, 1,
        [] {
            if (runBare({PHOTOINFO, "scan", "--jobs", "2", "--tools", folder.path(), folder.path()})
                    .empty()) {
                giveUp("photoinfo scan fails");
            }
        },
        [] {
            for (const fs::path& photo : scanned) {
                runTwice(EXIV2, photo);
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
