#include "photoinfo/commands/files_command.h"
#include "photoinfo/commands/summary.h"

namespace photoinfo {

namespace {

class SummaryCommand : public FilesCommand {
public:
    SummaryCommand()
        : FilesCommand(
              {.name = "summary",
               .description = "Camera, lens, exposure, date, orientation and rating of photos",
               .jsonName = "summary",
               .nothing = "no metadata"},
              Tool::exiv2, Count::many) {}

protected:
    std::optional<Finding> ask(const std::filesystem::path& file) override {
        std::optional<Finding> finding;
        exiv2_wp::createImageMetadata(file, [&finding](const exiv2_wp::SExivMetadataInfo& info) {
            finding = {summaryTable(info), summaryJson(info)};
        });
        return finding;
    }
};

}  // namespace

std::unique_ptr<Command> makeSummaryCommand() {
    return std::make_unique<SummaryCommand>();
}

}  // namespace photoinfo
