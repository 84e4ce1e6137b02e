#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace benchmarks {

/// Says what is missing and ends this program.
[[noreturn]] void giveUp(const std::string& what);

/// The sample, and whatever the folder holds that the environment variable EXIV2_WRAPPER_PHOTOS
/// names.
std::vector<std::filesystem::path> photos();

/// A temporary folder with a tool and photos.
class ToolFolder {
public:
    /// `tool` is linked as `toolName`.
    ToolFolder(const std::filesystem::path& tool, const std::string& toolName);
    ToolFolder(const ToolFolder&) = delete;
    ToolFolder& operator=(const ToolFolder&) = delete;
    ~ToolFolder();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] const std::filesystem::path& tool() const { return tool_; }
    /// So many links to copies of the originals, each a photo of its own to the library.
    [[nodiscard]] std::vector<std::filesystem::path> makePhotos(
        std::size_t count, const std::vector<std::filesystem::path>& originals) const;

private:
    std::filesystem::path path_;
    std::filesystem::path tool_;
};

/// The installed exiv2 in a folder of its own, given to the library at the first call.
const ToolFolder& exiv2Folder();

/// A link to the sample in that folder. There are more than the cache keeps, so that each is
/// forgotten before its next turn.
const std::filesystem::path& nextPhoto();

/// A metadata summary of a photo; ends this program when there is none.
void readSummary(const std::filesystem::path& photo);

/// The two tool runs that a photo costs, bare; returns what the first one prints.
std::string runBareTwice(const std::filesystem::path& photo);

}  // namespace benchmarks
