#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace photoinfo {

/// A file below a folder.
struct FoundFile {
    std::filesystem::path path;  ///< the folder's own path, and the way from there
    std::string name;            ///< the same for users: UTF-8 on Windows, elsewhere its bytes
};

/// What lies below a folder.
struct FoundFiles {
    std::vector<FoundFile> photos;      ///< in the order of their names' bytes
    std::vector<std::string> failures;  ///< of folders that couldn't be read, for the user
};

/// Whether a file of this name is taken for a photo: by its extension, in any letter case.
[[nodiscard]] bool hasPhotoExtension(const std::filesystem::path& file);

/// The extensions, parted by blanks, without points.
[[nodiscard]] std::string photoExtensions();

/// Finds the photos in `folder` and the folders below it, or with `takesAll` every regular file. A
/// link to a file counts as one; a link to a folder isn't followed, so that no loop catches the
/// search and no file is found twice. `isStopped` is asked now and then; true ends the search with
/// what it has.
[[nodiscard]] FoundFiles findPhotos(const std::filesystem::path& folder, bool takesAll,
                                    const std::function<bool()>& isStopped);

}  // namespace photoinfo
