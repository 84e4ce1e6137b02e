#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/commands/files_command.h"

namespace photoinfo {

namespace {

class LensCommand : public FilesCommand {
public:
    LensCommand()
        : FilesCommand({.name = "lens",
                        .description = "The name of the lens of photos, as exiftool makes it out",
                        .jsonName = "lens",
                        .nothing = "no lens"},
                       Tool::exiftool, Count::many) {}

protected:
    std::optional<Finding> ask(const std::filesystem::path& file) override {
        requireNameFitsRequest(file);
        const std::string lens = exiftool::getLensPrettyName(file);
        if (lens.empty()) {
            exiftool().requireAlive(file);
        }
        Finding finding;
        finding.table.row("Lens", lens);
        finding.json = toJson(lens);
        return finding;
    }
};

}  // namespace

std::unique_ptr<Command> makeLensCommand() {
    return std::make_unique<LensCommand>();
}

}  // namespace photoinfo
