#include "readme/read_text.h"

#include <algorithm>

#include "support/read_file.h"

namespace test_support {

namespace fs = std::filesystem;

fs::path sourcePath(const char* relative) {
    return fs::path(SOURCES) / relative;
}

std::string readText(const fs::path& file) {
    std::string text = readFile(file);
    std::erase(text, '\r');
    return text;
}

std::vector<fs::path> documents() {
    std::vector<fs::path> files = {sourcePath("README.md")};
    for (const fs::directory_entry& entry : fs::directory_iterator(sourcePath("docs"))) {
        if (entry.path().extension() == ".md") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace test_support
