#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "support/every_nth.h"
#include "support/read_file.h"

namespace test_support {

/// The files in `folder` whose names end in `suffix`, sorted; one empty path when there are none,
/// so that the tests of a missing folder can say so.
inline std::vector<std::filesystem::path> listFiles(const std::filesystem::path& folder,
                                                    const std::string& suffix = "") {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (name.ends_with(suffix) && !name.ends_with(".md")) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    if (files.empty()) {
        files.emplace_back();
    }
    return files;
}

/// The same natively; under Wine and under a sanitizer every third file. For tests that have a real
/// tool work for long on each: there it is the slowest, and the tests of the native build ask it
/// about all.
inline std::vector<std::filesystem::path> sampleFiles(const std::filesystem::path& folder) {
    const std::vector<std::filesystem::path> files = listFiles(folder);
    std::vector<std::filesystem::path> sample;
    for (std::size_t i = 0; i < files.size(); i += kEveryNthRun) {
        sample.push_back(files[i]);
    }
    return sample;
}

/// The folder of recorded print-outs (scripts/record_printouts.sh), which the environment variable
/// EXIV2_WRAPPER_PRINTOUTS names; empty without it.
inline std::filesystem::path printoutFolder() {
    const char* const folder = std::getenv("EXIV2_WRAPPER_PRINTOUTS");
    return folder == nullptr ? "" : folder;
}

/// A test's name for a photo.
inline std::string photoName(const ::testing::TestParamInfo<std::filesystem::path>& photo) {
    std::string name = photo.param.empty() ? "None" : photo.param.filename().string();
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return name;
}

}  // namespace test_support
