#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace test_support {

/// A file's bytes; none when it can't be read.
inline std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace test_support
