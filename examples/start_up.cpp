#include <filesystem>
#include <iostream>

#include "exiv2_wrapper/exiv2_wrapper.h"

// Ends the long-lived tool when the editor's main function is left, whichever way.
struct ExiftoolSession {
    explicit ExiftoolSession(const std::filesystem::path& folder)
        : isRunning(exiftool::initialize(folder)) {}
    ExiftoolSession(const ExiftoolSession&) = delete;
    ExiftoolSession& operator=(const ExiftoolSession&) = delete;
    ~ExiftoolSession() { exiftool::uninitialize(); }

    const bool isRunning;
};

// start_up TOOLS: as an editor starts, before it makes its other threads.
int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    const bool hasExiv2 = exiv2_wp::initialize(argv[1]);
    const ExiftoolSession exiftool(argv[1]);

    // Either tool may be missing: what the other one gives still works.
    std::cout << "photos can" << (hasExiv2 ? "" : "not") << " be read\n"
              << "exports can" << (exiftool.isRunning ? "" : "not") << " get metadata\n";
    return hasExiv2 && exiftool.isRunning ? 0 : 1;
}
