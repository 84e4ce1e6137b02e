#include <string>
#include <vector>

#include "bare_run.h"
#include "comparison.h"
#include "tool_folder.h"

// What `photoinfo scan` adds to the tool runs that a folder's photos cost.

namespace {

using namespace benchmarks;

namespace fs = std::filesystem;

constexpr std::size_t kPhotos = 300;

// The sample and whatever the folder holds that the environment variable EXIV2_WRAPPER_PHOTOS
// names.
std::vector<fs::path> originals() {
    std::vector<fs::path> files = {SAMPLE_PHOTO};
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
std::vector<fs::path> fill(const fs::path& folder) {
    const std::vector<fs::path> files = originals();
    std::vector<fs::path> photos;
    fs::create_directory(folder);
    for (std::size_t i = 0; i < kPhotos; ++i) {
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

struct ScannedFolder {
    ToolFolder tool = ToolFolder(findProgram("exiv2"), "exiv2.exe");
    fs::path folder = tool.path() / "photos";
    std::vector<fs::path> photos = fill(folder);
};

const ScannedFolder& scannedFolder() {
    static const ScannedFolder folder;
    return folder;
}

void scan(const std::string& jobs) {
    std::string output;
    const ScannedFolder& scanned = scannedFolder();
    if (!runBare(
            {PHOTOINFO, "scan", "--jobs", jobs, "--tools", scanned.tool.path(), scanned.folder},
            output)) {
        giveUp("photoinfo scan fails");
    }
}

// A photo without metadata makes a tool fail, which is its answer.
void runBareForEach() {
    std::string output;
    for (const fs::path& photo : scannedFolder().photos) {
        runBare({scannedFolder().tool.tool(), "-PXEkycv", "-q", photo}, output);
        runBare({scannedFolder().tool.tool(), "pr", photo}, output);
    }
}

void oneJob(benchmark::State& state) {
    compare(
        state, {.reference = "a loop of the two tool runs", .atMost = 1.05}, 1, [] { scan("1"); },
        runBareForEach);
}

void twoJobs(benchmark::State& state) {
    compare(
        state, {.reference = "a loop of the two tool runs", .timesFaster = 1.8}, 1,
        [] { scan("2"); }, runBareForEach);
}

BENCHMARK_ROW(oneJob, "photoinfo scan of 300 photos, one job", 15);
BENCHMARK_ROW(twoJobs, "photoinfo scan of 300 photos, two jobs", 7);

}  // namespace

BENCHMARK_MAIN();
