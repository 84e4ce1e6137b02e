#include <string>
#include <system_error>

#include "photoinfo/commands/files_command.h"
#include "photoinfo/files/output_file.h"
#include "photoinfo/files/photo_file.h"
#include "photoinfo/show/text.h"
#include "photoinfo/tool/preview_call.h"

namespace photoinfo {

namespace {

namespace fs = std::filesystem;

// Larger than any preview: the tool then gives its largest.
constexpr int kLargest = 65535;

class PreviewCommand : public FilesCommand {
public:
    PreviewCommand()
        : FilesCommand({.name = "preview",
                        .description = "Writes an embedded preview into a file",
                        .jsonName = "preview",
                        .nothing = "no preview"},
                       Tool::exiv2, Count::one) {}

protected:
    void addOptions(CLI::App& app) override {
        app.add_option("-o,--output", output_, "The file to write; replaced when it exists")
            ->type_name("OUT")
            ->required();
        app.add_option("--size", size_,
                       "Of the previews with this many pixels or more on the longer side the "
                       "smallest; the largest there is otherwise, and by default")
            ->type_name("N")
            ->check(CLI::Range(1, kLargest));
    }

    std::optional<Finding> ask(const fs::path& file) override {
        const fs::path output = filePathOf(output_);
        requireWritable(file, output);
        if (!speaksPreviewCall(ProbePhoto())) {
            throw Failure(
                ExitCode::previewCall,
                "this exiv2.exe does not know the call that extracts previews; the one of "
                "this project does");
        }
        std::optional<Finding> finding;
        bool isWritten = true;
        extractPreview(file, size_,
                       [&](const Preview& preview, std::span<const unsigned char> bytes) {
                           isWritten = writeWhole(output, bytes);
                           finding = findingOf(preview, bytes.size());
                           return isWritten;
                       });
        if (!finding) {
            throw Failure(ExitCode::file, "exiv2 finds no preview in it");
        }
        if (!isWritten) {
            throw Failure(ExitCode::file, output_ + " cannot be written");
        }
        return finding;
    }

private:
    // A device or a pipe must not be replaced by a file.
    void requireWritable(const fs::path& photo, const fs::path& output) const {
        std::error_code error;
        if (fs::equivalent(photo, output, error)) {
            throw Failure(ExitCode::file, "the preview would replace the photo itself");
        }
        const fs::file_status status = fs::status(output, error);
        if (fs::exists(status) && !fs::is_regular_file(status)) {
            throw Failure(ExitCode::file, output_ + " is no regular file, and is not replaced");
        }
    }

    [[nodiscard]] Finding findingOf(const Preview& preview, std::size_t size) const {
        Finding finding;
        finding.table.row("Preview", std::to_string(preview.width) + " x " +
                                         std::to_string(preview.height) + " pixels");
        if (preview.offset.top != 0 || preview.offset.bottom != 0) {
            finding.table.row("Rows not picture", std::to_string(preview.offset.top) + " above, " +
                                                      std::to_string(preview.offset.bottom) +
                                                      " below");
        }
        finding.table.row("Written", output_ + ", " + std::to_string(size) + " bytes");
        finding.json = {{"width", preview.width},
                        {"height", preview.height},
                        {"rowsAbove", preview.offset.top},
                        {"rowsBelow", preview.offset.bottom},
                        {"output", output_},
                        {"size", size}};
        return finding;
    }

    std::string output_;
    int size_ = kLargest;
};

}  // namespace

std::unique_ptr<Command> makePreviewCommand() {
    return std::make_unique<PreviewCommand>();
}

}  // namespace photoinfo
