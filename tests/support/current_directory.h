#pragma once

#include <filesystem>

namespace test_support {

/// Moves the process into a folder, and back when it dies.
class CurrentDirectory {
public:
    explicit CurrentDirectory(const std::filesystem::path& folder)
        : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;
    ~CurrentDirectory() { std::filesystem::current_path(before_); }

private:
    std::filesystem::path before_;
};

}  // namespace test_support
