#include "tool_folder.h"

#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "bare_tool.h"
#include "exiv2_wrapper/exiv2_wrapper.h"

namespace benchmarks {

namespace fs = std::filesystem;

void giveUp(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::exit(EXIT_FAILURE);
}

std::vector<fs::path> photos() {
    std::vector<fs::path> files = {SAMPLE_PHOTO};
    const char* const folder = std::getenv("EXIV2_WRAPPER_PHOTOS");
    std::error_code isMissing;
    for (const auto& entry : fs::directory_iterator(folder == nullptr ? "" : folder, isMissing)) {
        if (entry.is_regular_file() && entry.path().extension() != ".md") {
            files.push_back(entry.path());
        }
    }
    return files;
}

ToolFolder::ToolFolder(const fs::path& tool, const std::string& toolName) {
    std::string pattern = fs::temp_directory_path() / "exiv2_wrapper-benchmark-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
        giveUp("no temporary folder");
    }
    path_ = pattern;
    tool_ = path_ / toolName;
    fs::create_symlink(tool, tool_);
}

ToolFolder::~ToolFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::vector<fs::path> ToolFolder::makePhotos(std::size_t count,
                                             const std::vector<fs::path>& originals) const {
    const fs::path folder = path_ / "photos";
    fs::create_directory(folder);
    std::vector<fs::path> photos;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t original = i % originals.size();
        photos.push_back(folder /
                         (std::to_string(i) + "-" + originals[original].filename().string()));
        if (i == original) {
            fs::copy_file(originals[i], photos.back());
        } else {
            fs::create_hard_link(photos[original], photos.back());
        }
    }
    return photos;
}

const ToolFolder& exiv2Folder() {
    static const ToolFolder folder(EXIV2, "exiv2.exe");
    static const bool isReady = exiv2_wp::initialize(folder.path());
    if (!isReady) {
        giveUp("exiv2 doesn't run");
    }
    return folder;
}

const fs::path& nextPhoto() {
    constexpr std::size_t kPhotos = 512;
    static const std::vector<fs::path> links = exiv2Folder().makePhotos(kPhotos, {SAMPLE_PHOTO});
    static std::size_t next = 0;
    return links[next++ % kPhotos];
}

void readSummary(const fs::path& photo) {
    bool isAnswered = false;
    exiv2_wp::createImageMetadata(photo,
                                  [&](const exiv2_wp::SExivMetadataInfo&) { isAnswered = true; });
    if (!isAnswered) {
        giveUp("no summary of " + photo.string());
    }
}

std::string runBareTwice(const fs::path& photo) {
    const std::string tool = exiv2Folder().tool();
    std::string printed = runBare({tool, "-PXEkycv", "-q", photo});
    runBare({tool, "pr", photo});
    return printed;
}

}  // namespace benchmarks
