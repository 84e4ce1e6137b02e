#pragma once

#include <filesystem>
#include <string>

namespace test_support {

/// An absolute path that no cache of this process has heard of. There is no such file.
inline std::filesystem::path freshFile(const std::string& name) {
    static int number = 0;
    return std::filesystem::temp_directory_path() / "photos that nobody has asked for" /
           std::to_string(number++) / name;
}

}  // namespace test_support
