#include "photoinfo/tool/exiftool_tool.h"

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/exit_code.h"
#include "photoinfo/platform.h"
#include "photoinfo/tool/tool_folder.h"

namespace photoinfo {

namespace {

[[noreturn]] void failWithReason(const std::string& toolDirectory) {
    throw Failure(ExitCode::exiftool, whyToolFails(toolDirectory, "exiftool.exe"));
}

}  // namespace

Exiftool::Exiftool(const std::string& toolDirectory) : toolDirectory_(toolDirectory) {
    if (toolDirectory.empty()) {
        throw Failure(ExitCode::exiftool, "name the folder of exiftool.exe with --tools DIR");
    }
    // Under a locale that the machine lacks, Perl's warning would come as a tag "perl".
    platform::setEnvironmentDefault("PERL_BADLANG", "0");
    if (!exiftool::initialize(platform::pathOf(toolDirectory))) {
        failWithReason(toolDirectory);
    }
}

Exiftool::~Exiftool() {
    exiftool::uninitialize();
}

void Exiftool::requireAlive(const std::filesystem::path& file) const {
    if (exiftool::readTags(file, "-ExifToolVersion").empty()) {
        failWithReason(toolDirectory_);
    }
}

bool fitsRequest(std::string_view text) {
    return text.find_first_of("\r\n") == std::string_view::npos;
}

void requireNameFitsRequest(const std::filesystem::path& file) {
    const std::u8string name = file.u8string();
    if (!fitsRequest({reinterpret_cast<const char*>(name.data()), name.size()})) {
        throw Failure(ExitCode::file, "exiftool cannot be told a name that holds a line end");
    }
}

}  // namespace photoinfo
