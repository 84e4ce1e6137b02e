#include "tool_folder.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "bare_run.h"
#include "exiv2_wrapper/exiv2_wrapper.h"

namespace benchmarks {

namespace fs = std::filesystem;

std::string environmentOr(const char* name, const std::string& fallback) {
    const char* const value = std::getenv(name);
    return value == nullptr ? fallback : value;
}

fs::path findProgram(const std::string& name) {
    std::istringstream folders(environmentOr("PATH", ""));
    for (std::string folder; std::getline(folders, folder, ':');) {
        const fs::path program = fs::path(folder) / name;
        if (access(program.c_str(), X_OK) == 0) {
            return program;
        }
    }
    giveUp("there is no " + name);
}

void giveUp(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::exit(EXIT_FAILURE);
}

ToolFolder::ToolFolder(const fs::path& tool, const std::string& toolName, std::size_t photos) {
    std::string pattern = fs::temp_directory_path() / "exiv2_wrapper-benchmark-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
        giveUp("no temporary folder");
    }
    path_ = pattern;
    tool_ = path_ / toolName;
    fs::create_symlink(tool, tool_);
    const fs::path original = path_ / "original.jpg";
    fs::copy_file(environmentOr("PHOTO", SAMPLE_PHOTO), original);
    for (std::size_t i = 0; i < photos; ++i) {
        photos_.push_back(path_ / ("photo-" + std::to_string(i) + ".jpg"));
        fs::create_hard_link(original, photos_.back());
    }
}

ToolFolder::~ToolFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

const fs::path& ToolFolder::nextPhoto() {
    return photos_[next_++ % photos_.size()];
}

ToolFolder& exiv2Folder() {
    static ToolFolder folder(findProgram("exiv2"), "exiv2.exe", kMorePhotosThanAreKept);
    static const bool isReady = exiv2_wp::initialize(folder.path());
    if (!isReady) {
        giveUp("exiv2 doesn't run");
    }
    return folder;
}

void readSummary(const fs::path& photo) {
    bool isAnswered = false;
    exiv2_wp::createImageMetadata(photo,
                                  [&](const exiv2_wp::SExivMetadataInfo&) { isAnswered = true; });
    if (!isAnswered) {
        giveUp("no summary of " + photo.string());
    }
}

void runBareTwice(const fs::path& photo) {
    std::string output;
    const std::string tool = exiv2Folder().tool();
    if (!runBare({tool, "-PXEkycv", "-q", photo.string()}, output) ||
        !runBare({tool, "pr", photo.string()}, output)) {
        giveUp("exiv2 fails for " + photo.string());
    }
}

}  // namespace benchmarks
