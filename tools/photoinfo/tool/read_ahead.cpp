#include "photoinfo/tool/read_ahead.h"

#include <sstream>
#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/files/photo_file.h"
#include "photoinfo/tool/child_process.h"

namespace photoinfo {

namespace fs = std::filesystem;

void readAhead(const std::vector<fs::path>& files) {
    std::vector<fs::path> readable;
    for (const fs::path& file : files) {
        if (readingError(file).empty()) {
            readable.push_back(file);
        }
    }
    exiv2_wp::readAhead(readable);
}

// A line of five numbers, and behind it as much as two of them say.
bool knowsReadCall(const fs::path& exiv2, const fs::path& photo) {
    const fs::path option = "--read";
    const std::string text =
        platform::outputOf(exiv2, {option.native(), photo.native()}).value_or("");
    std::istringstream numbers(text.substr(0, text.find('\n')));
    std::size_t position = 1;
    std::size_t entriesCode = 1;
    std::size_t entriesSize = 0;
    std::size_t summaryCode = 1;
    std::size_t summarySize = 0;
    numbers >> position >> entriesCode >> entriesSize >> summaryCode >> summarySize;
    return numbers && position == 0 && entriesCode == 0 &&
           text.size() == text.find('\n') + 1 + entriesSize + summarySize;
}

}  // namespace photoinfo
