#include "photoinfo/tool/exiv2_tool.h"

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/exit_code.h"
#include "photoinfo/platform.h"
#include "photoinfo/tool/tool_folder.h"

namespace photoinfo {

void startExiv2(const std::string& toolDirectory) {
    if (exiv2_wp::initialize(platform::pathOf(toolDirectory))) {
        return;
    }
    throw Failure(ExitCode::exiv2,
                  toolDirectory.empty()
                      ? "no working exiv2.exe beside the library; name its folder with --tools DIR"
                      : whyToolFails(toolDirectory, "exiv2.exe"));
}

}  // namespace photoinfo
