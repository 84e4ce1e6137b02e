#include "photoinfo/folder/photo_finder.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>
#include <utility>

#include "photoinfo/platform.h"

namespace photoinfo {

namespace {

namespace fs = std::filesystem;

// Lower case. Kinds that exiv2 reads, and raw kinds that it may learn: a photo that is passed over
// in silence would be worse than one without metadata.
// clang-format off
constexpr std::array<std::string_view, 53> kExtensions = {
    "jpg", "jpeg", "jpe", "jfif", "tif", "tiff", "png", "webp", "gif", "bmp", "psd", "jp2",
    "jxl", "heic", "heif", "hif", "avif", "exv",
    "3fr", "arw", "bay", "cr2", "cr3", "crw", "dcr", "dng", "eip", "erf", "fff", "gpr", "iiq",
    "k25", "kdc", "mef", "mos", "mrw", "nef", "nrw", "orf", "ori", "pef", "ptx", "pxn", "raf",
    "raw", "rw2", "rwl", "rwz", "sr2", "srf", "srw", "thm", "x3f",
};
// clang-format on

// Another folder is opened each time: an entry at a time, since every entry may fail on its own.
class Search {
public:
    Search(bool takesAll, const std::function<bool()>& isStopped)
        : takesAll_(takesAll), isStopped_(isStopped) {}

    FoundFiles run(const fs::path& folder) {
        pending_.push_back(folder);
        while (!pending_.empty() && !isStopped_()) {
            const fs::path next = std::move(pending_.back());
            pending_.pop_back();
            readFolder(next);
        }
        std::sort(found_.photos.begin(), found_.photos.end(),
                  [](const FoundFile& a, const FoundFile& b) { return a.name < b.name; });
        std::sort(found_.failures.begin(), found_.failures.end());
        return std::move(found_);
    }

private:
    void readFolder(const fs::path& folder) {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            take(entry->path());
        }
        if (error) {
            found_.failures.push_back(platform::argumentOf(folder) + ": the folder cannot be read");
        }
    }

    void take(const fs::path& path) {
        std::error_code error;
        if (fs::is_directory(path, error)) {
            if (!platform::isLink(path)) {
                pending_.push_back(path);
            }
        } else if ((takesAll_ || hasPhotoExtension(path)) && isThere(path)) {
            found_.photos.push_back({path, platform::argumentOf(path)});
        }
    }

    // A photo that can't be looked at is found too: what is wrong with it is told later. Pipes and
    // devices are no photos, whatever they are called.
    static bool isThere(const fs::path& path) {
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        return fs::is_regular_file(status) || !fs::status_known(status) ||
               status.type() == fs::file_type::not_found;
    }

    bool takesAll_;
    const std::function<bool()>& isStopped_;
    std::vector<fs::path> pending_;
    FoundFiles found_;
};

}  // namespace

bool hasPhotoExtension(const fs::path& file) {
    const fs::path::string_type extension = file.extension().native();
    return std::any_of(kExtensions.begin(), kExtensions.end(), [&](std::string_view known) {
        return extension.size() == known.size() + 1 &&
               std::equal(known.begin(), known.end(), extension.begin() + 1,
                          [](char wanted, fs::path::value_type c) {
                              const bool isUpper = c >= 'A' && c <= 'Z';
                              return (isUpper ? c - 'A' + 'a' : c) == wanted;
                          });
    });
}

std::string photoExtensions() {
    std::string names;
    for (const std::string_view extension : kExtensions) {
        names.append(names.empty() ? "" : " ").append(extension);
    }
    return names;
}

FoundFiles findPhotos(const fs::path& folder, bool takesAll,
                      const std::function<bool()>& isStopped) {
    return Search(takesAll, isStopped).run(folder);
}

}  // namespace photoinfo
