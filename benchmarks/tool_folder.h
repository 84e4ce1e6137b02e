#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace benchmarks {

/// The value of an environment variable.
std::string environmentOr(const char* name, const std::string& fallback);

/// The full path of a program of the PATH; ends this program when there is none.
std::filesystem::path findProgram(const std::string& name);

/// Says what is missing and ends this program.
[[noreturn]] void giveUp(const std::string& what);

/// A temporary folder with a tool and many links to one photo, each a file of its own to the cache.
class ToolFolder {
public:
    /// `tool` is linked as `toolName`. The photo is the sample, or what the environment variable
    /// PHOTO names.
    ToolFolder(const std::filesystem::path& tool, const std::string& toolName,
               std::size_t photos = 1);
    ToolFolder(const ToolFolder&) = delete;
    ToolFolder& operator=(const ToolFolder&) = delete;
    ~ToolFolder();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] const std::filesystem::path& tool() const { return tool_; }
    /// The photos' paths one after another, and from the beginning again.
    [[nodiscard]] const std::filesystem::path& nextPhoto();

private:
    std::filesystem::path path_;
    std::filesystem::path tool_;
    std::vector<std::filesystem::path> photos_;
    std::size_t next_ = 0;
};

/// More than the cache keeps, so that a photo is forgotten before its next turn.
inline constexpr std::size_t kMorePhotosThanAreKept = 512;

/// The installed exiv2 in a folder of its own, given to the library at the first call.
ToolFolder& exiv2Folder();

/// A metadata summary of a photo; ends this program when there is none.
void readSummary(const std::filesystem::path& photo);

/// The two tool runs that a photo costs, bare; ends this program when one fails.
void runBareTwice(const std::filesystem::path& photo);

}  // namespace benchmarks
