#pragma once

#include <CLI/CLI.hpp>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "photoinfo/command.h"
#include "photoinfo/folder/interrupt.h"
#include "photoinfo/folder/photo_finder.h"
#include "photoinfo/folder/scanned_photo.h"

namespace photoinfo {

/// A command's way through all photos of a folder: the options that such commands share, the photos
/// that it finds, and what the library says of each.
class FolderScan {
public:
    /// What else a command asks about a photo that could be read. Called from several threads, for
    /// another index each time: that of the photo in `found()`.
    using Question = std::function<void(std::size_t index)>;

    /// Adds the folder and the shared options; the scan lives longer than `app`.
    void addOptions(CLI::App& app);

    /// Starts exiv2.exe and finds the photos. Raises a `Failure` when there is no such tool or no
    /// such folder.
    void begin(const SharedOptions& options);
    [[nodiscard]] const std::vector<FoundFile>& found() const { return found_.photos; }

    /// Asks for the summary of each photo. After an interrupt, photos without an answer are
    /// missing.
    void askAll(const Question& alsoAsk = {});
    /// The photos that have been asked about, in the order of their names.
    [[nodiscard]] std::vector<ScannedPhoto> takePhotos();

    [[nodiscard]] bool isInterrupted() const { return interrupt_ && interrupt_->isRequested(); }

    /// Complains of what went wrong and returns the exit code that tells of it.
    [[nodiscard]] ExitCode close(const std::vector<ScannedPhoto>& photos) const;

    [[nodiscard]] const std::string& folder() const { return folder_; }

private:
    [[nodiscard]] bool readsAhead() const;
    void readAheadOf(std::size_t begin, std::size_t end) const;
    void answer(std::size_t index, const Question& alsoAsk);
    void refuseDoubles();

    std::string folder_;
    std::string toolDirectory_;
    bool takesAll_ = false;
    std::size_t jobs_ = 0;
    std::optional<Interrupt> interrupt_;
    FoundFiles found_;
    std::vector<std::optional<ScannedPhoto>> photos_;  // one for each that is found
};

}  // namespace photoinfo
