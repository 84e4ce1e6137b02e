#include "exiftool/running_tool.h"

#include <cstdlib>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/text/path_text.h"

namespace test_support {

ToolDirectory& runningTool() {
    static ToolDirectory tool("exiftool.exe");
    static const bool isRunning = exiftool::initialize(tool.path());
    if (!isRunning) {
        std::abort();
    }
    return tool;
}

std::filesystem::path uniqueFile(std::string_view name) {
    static int count = 0;
    return runningTool().path() / std::to_string(count++) / name;
}

std::string inRequest(const std::filesystem::path& file) {
    return exiv2_wp::internal::hostUtf8Path(file);
}

}  // namespace test_support
