#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "exiv2_wrapper/exiv2_wrapper.h"

namespace exiftool {

bool initialize(const std::filesystem::path& exiftoolDir) {
    return internal::getExiftoolProcess(exiftoolDir).isRunning();
}

void uninitialize() {
    internal::getExiftoolProcess({}).stop();
}

}  // namespace exiftool
