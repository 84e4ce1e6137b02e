#include "photoinfo/tool/exiv_reader.h"

#include <optional>
#include <string>

#include "photoinfo/exit_code.h"
#include "photoinfo/platform.h"

namespace photoinfo {

std::unique_ptr<exiv2_wp::ExivReader> makeExivReader(const std::filesystem::path& file) {
    const std::optional<std::string> narrow = platform::narrowPathOf(file);
    if (!narrow) {
        throw Failure(ExitCode::file,
                      "its name holds characters that the system's code page lacks");
    }
    return std::make_unique<exiv2_wp::ExivReader>(*narrow);
}

}  // namespace photoinfo
