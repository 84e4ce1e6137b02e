#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/commands/files_command.h"
#include "photoinfo/show/exif_codes.h"

namespace photoinfo {

namespace {

class OrientationCommand : public FilesCommand {
public:
    OrientationCommand()
        : FilesCommand({.name = "orientation",
                        .description = "How photos have to be turned to be upright",
                        .jsonName = "orientation",
                        .nothing = "no orientation"},
                       Tool::exiv2, Count::many) {}

protected:
    std::optional<Finding> ask(const std::filesystem::path& file) override {
        std::optional<Finding> finding;
        exiv2_wp::readExiv2Orientation(file, [&finding](int orientation) {
            finding.emplace();
            finding->table.row("Orientation", orientationName(orientation));
            finding->json = orientation;
        });
        return finding;
    }
};

}  // namespace

std::unique_ptr<Command> makeOrientationCommand() {
    return std::make_unique<OrientationCommand>();
}

}  // namespace photoinfo
