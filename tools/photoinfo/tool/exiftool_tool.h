#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace photoinfo {

/// The long-lived exiftool.exe: runs from here on, and is asked to quit at the end of this object's
/// life. One in the program's life.
class Exiftool {
public:
    /// The folder is an argument (platform.h). Raises a `Failure` that says what is wrong when the
    /// tool can't be started. One that ends right behind its start isn't noticed here.
    explicit Exiftool(const std::string& toolDirectory);
    Exiftool(const Exiftool&) = delete;
    Exiftool& operator=(const Exiftool&) = delete;
    ~Exiftool();

    /// An empty answer says that there is nothing, or that nobody is there to give one. Raises a
    /// `Failure` in the second case; `file` is any file that exists.
    void requireAlive(const std::filesystem::path& file) const;

private:
    std::string toolDirectory_;
};

/// True when the text can stand in a request, which has one argument a line.
[[nodiscard]] bool fitsRequest(std::string_view text);

/// Raises a `Failure` about the file when its name can't stand in a request. The message doesn't
/// name it.
void requireNameFitsRequest(const std::filesystem::path& file);

}  // namespace photoinfo
