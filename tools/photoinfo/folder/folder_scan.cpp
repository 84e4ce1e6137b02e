#include "photoinfo/folder/folder_scan.h"

#include <algorithm>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <unordered_map>
#include <utility>

#include "photoinfo/exit_code.h"
#include "photoinfo/files/photo_file.h"
#include "photoinfo/folder/parallel.h"
#include "photoinfo/messages.h"
#include "photoinfo/platform.h"
#include "photoinfo/tool/exiv2_tool.h"
#include "photoinfo/tool/probe_photo.h"
#include "photoinfo/tool/read_ahead.h"

namespace photoinfo {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostJobs = 256;

std::size_t coreCount() {
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMostJobs);
}

// Enough for all jobs to have work, and together no more than the library keeps.
std::size_t portionOf(std::size_t photos, std::size_t jobs) {
    constexpr std::size_t kKeptPhotos = 160;
    const std::size_t share = std::min((photos + jobs - 1) / jobs, kKeptPhotos / jobs);
    return std::clamp<std::size_t>(share, 1, kReadAheadPortion);
}

void requireFolder(const std::string& argument) {
    std::error_code error;
    const fs::file_status status = fs::status(filePathOf(argument), error);
    if (!fs::exists(status)) {
        throw Failure(ExitCode::file, aboutFile(argument, "no such folder"));
    }
    if (!fs::is_directory(status)) {
        throw Failure(ExitCode::file, aboutFile(argument, "is no folder"));
    }
}

std::string lowerCase(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return text;
}

// The second question costs no tool run.
void askAbout(const fs::path& file, ScannedPhoto& photo) {
    exiv2_wp::createImageMetadata(
        file, [&photo](const exiv2_wp::SExivMetadataInfo& summary) { photo.summary = summary; });
    exiv2_wp::readExiv2Info(
        file, "", "", [&photo](const exiv2_wp::SLensInfo& lens) { photo.lensName = lens.lensName; },
        [](const exiv2_wp::SMetadataExiv&) {}, [] {});
}

std::string photoCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " photo" : " photos");
}

}  // namespace

void FolderScan::addOptions(CLI::App& app) {
    app.add_option("DIR", folder_, "The folder")->type_name(" ")->required();
    app.add_option("--jobs", jobs_,
                   "How many photos are asked about at the same time; as many as the machine has "
                   "cores by default")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{1}, kMostJobs));
    app.add_flag("--all", takesAll_,
                 "Ask about every file, not only about those with a photo's extension");
    app.footer("Links to folders are not followed. Extensions of photos, in any letter case:\n  " +
               photoExtensions() + "\n\n" + app.get_footer());
}

void FolderScan::begin(const SharedOptions& options) {
    requireFolder(folder_);
    toolDirectory_ = options.toolDirectory;
    startExiv2(toolDirectory_);
    interrupt_.emplace();
    found_ = findPhotos(filePathOf(folder_), takesAll_, [this] { return isInterrupted(); });
}

void FolderScan::askAll(const Question& alsoAsk) {
    photos_.resize(found_.photos.size());
    refuseDoubles();
    const std::size_t jobs = jobs_ > 0 ? jobs_ : coreCount();
    Preparation preparation;
    if (photos_.size() > 1 && readsAhead()) {
        preparation = {portionOf(photos_.size(), jobs),
                       [this](std::size_t begin, std::size_t end) { readAheadOf(begin, end); }};
    }
    workInParallel(
        photos_.size(), jobs, *interrupt_, [&](std::size_t index) { answer(index, alsoAsk); },
        preparation);
}

// By a tool that reads photo by photo nothing would be gained, and a portion would be lost at
// Ctrl-C. Where nobody has named the tool's folder, only the library knows it.
bool FolderScan::readsAhead() const {
    return toolDirectory_.empty() ||
           knowsReadCall(platform::pathOf(toolDirectory_) / "exiv2.exe", ProbePhoto().file());
}

// The library takes both for one file, as Windows does; the second would get the first's answer.
void FolderScan::refuseDoubles() {
    std::unordered_map<std::string, std::size_t> first;
    for (std::size_t i = 0; i < photos_.size(); ++i) {
        const std::string& file = found_.photos[i].name;
        const auto [other, isFirst] = first.try_emplace(lowerCase(file), i);
        if (!isFirst) {
            photos_[i] = {file,
                          "differs only in letter case from " + found_.photos[other->second].name};
        }
    }
}

void FolderScan::readAheadOf(std::size_t begin, std::size_t end) const {
    std::vector<fs::path> files;
    for (; begin < end; ++begin) {
        if (!photos_[begin]) {
            files.push_back(found_.photos[begin].path);
        }
    }
    readAhead(files);
}

void FolderScan::answer(std::size_t index, const Question& alsoAsk) {
    if (photos_[index]) {
        return;
    }
    const FoundFile& file = found_.photos[index];
    ScannedPhoto photo{file.name, readingError(file.path)};
    if (photo.error.empty()) {
        try {
            askAbout(file.path, photo);
        } catch (const std::out_of_range&) {
            photo.error = "exiv2 describes it in a way that is not understood";
        }
        if (alsoAsk && photo.error.empty()) {
            alsoAsk(index);
        }
    }
    if (!isInterrupted()) {
        photos_[index] = std::move(photo);
    }
}

std::vector<ScannedPhoto> FolderScan::takePhotos() {
    std::vector<ScannedPhoto> photos;
    for (std::optional<ScannedPhoto>& photo : photos_) {
        if (photo) {
            photos.push_back(std::move(*photo));
        }
    }
    return photos;
}

ExitCode FolderScan::close(const std::vector<ScannedPhoto>& photos) const {
    for (const std::string& failure : found_.failures) {
        complain(failure);
    }
    std::size_t failed = 0;
    for (const ScannedPhoto& photo : photos) {
        if (!photo.error.empty()) {
            ++failed;
            complain(aboutFile(photo.file, photo.error));
        }
    }
    if (found_.photos.empty() && !isInterrupted()) {
        complain(folder_ + ": no photos below this folder");
    }
    if (failed > 0) {
        complain(std::to_string(failed) + " of " + photoCount(photos.size()) +
                 " could not be asked about");
    }
    if (isInterrupted()) {
        complain("stopped after " + std::to_string(photos.size()) + " of " +
                 photoCount(found_.photos.size()));
        return ExitCode::interrupted;
    }
    return failed > 0 || !found_.failures.empty() ? ExitCode::file : ExitCode::success;
}

}  // namespace photoinfo
