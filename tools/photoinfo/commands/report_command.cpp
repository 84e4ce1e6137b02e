#include <algorithm>
#include <iostream>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "photoinfo/files/output_file.h"
#include "photoinfo/files/photo_file.h"
#include "photoinfo/folder/folder_scan.h"
#include "photoinfo/messages.h"
#include "photoinfo/report/report_page.h"
#include "photoinfo/show/text.h"
#include "photoinfo/tool/preview_call.h"

namespace photoinfo {

namespace {

namespace fs = std::filesystem;

// Pixels on the longer side: more than the page shows, for screens with fine pixels.
constexpr int kPreviewSize = 160;

class ReportCommand : public Command {
public:
    CLI::App* addTo(CLI::App& program) override {
        CLI::App* const app = program.add_subcommand(
            "report", "Writes a page about every photo below a folder, for a browser");
        scan_.addOptions(*app);
        app->add_option("-o,--output", output_,
                        "The HTML file to write; replaced when it exists. It needs no other file "
                        "and no network")
            ->type_name("OUT")
            ->required();
        return app;
    }

    ExitCode run(const SharedOptions& options) override {
        const fs::path output = filePathOf(output_);
        requireWritable(output);
        scan_.begin(options);
        requireNoPhoto(output);
        askAll();
        const std::vector<ScannedPhoto> photos = scan_.takePhotos();
        if (scan_.isInterrupted()) {
            complain(output_ + " is not written");
            return scan_.close(photos);
        }
        write(output, photos);
        return scan_.close(photos);
    }

private:
    void requireWritable(const fs::path& output) const {
        std::error_code error;
        const fs::file_status status = fs::status(output, error);
        if (fs::exists(status) && !fs::is_regular_file(status)) {
            throw Failure(ExitCode::file,
                          aboutFile(output_, "is no regular file, and is not replaced"));
        }
        const fs::path folder = output.parent_path();
        if (!folder.empty() && !fs::is_directory(folder, error)) {
            throw Failure(ExitCode::file, aboutFile(output_, "its folder does not exist"));
        }
    }

    // By its extension too: a photo of another folder is as precious.
    void requireNoPhoto(const fs::path& output) const {
        const bool isPhoto =
            hasPhotoExtension(output) ||
            std::any_of(scan_.found().begin(), scan_.found().end(), [&](const FoundFile& photo) {
                std::error_code error;
                return !hasReportExtension(photo.path) && fs::equivalent(photo.path, output, error);
            });
        if (isPhoto) {
            throw Failure(ExitCode::file, aboutFile(output_, "is a photo, and is not replaced"));
        }
    }

    // With --all an earlier report may be among the files.
    static bool hasReportExtension(const fs::path& file) {
        const fs::path extension = file.extension();
        return extension == ".html" || extension == ".htm";
    }

    void askAll() {
        previews_.resize(scan_.found().size());
        const bool hasPreviews = speaksPreviewCall(ProbePhoto());
        if (!hasPreviews) {
            complain(
                "this exiv2.exe does not know the call that extracts previews; the page does "
                "without");
        }
        scan_.askAll([&](std::size_t index) {
            if (hasPreviews) {
                extractPreview(scan_.found()[index].path, kPreviewSize,
                               [&](const Preview&, std::span<const unsigned char> bytes) {
                                   previews_[index] = previewAddress(bytes);
                                   return true;
                               });
            }
        });
    }

    // Photos and previews are in the same order, for nothing is missing.
    void write(const fs::path& output, const std::vector<ScannedPhoto>& photos) const {
        Json entries = Json::array();
        for (std::size_t i = 0; i < photos.size(); ++i) {
            entries.push_back(reportEntry(photos[i], previews_[i]));
        }
        const std::string page = reportPage(scan_.folder(), entries);
        const void* const bytes = page.data();
        if (!writeWhole(output, {static_cast<const unsigned char*>(bytes), page.size()})) {
            throw Failure(ExitCode::file, aboutFile(output_, "cannot be written"));
        }
        std::cout << printable(output_) << ": " << photos.size()
                  << (photos.size() == 1 ? " photo\n" : " photos\n");
    }

    FolderScan scan_;
    std::string output_;
    std::vector<std::string> previews_;  // one for each photo that is found; empty: none
};

}  // namespace

std::unique_ptr<Command> makeReportCommand() {
    return std::make_unique<ReportCommand>();
}

}  // namespace photoinfo
