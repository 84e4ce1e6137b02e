#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "readme/read_text.h"

/// Code that stands in the documents stands in a file of examples/ as well, which is built and run.
namespace test_support {
namespace {

struct Sample {
    std::string language;
    std::string file;  // below the project's folder; empty: none was named
    std::string code;
};

// The last link to a file of examples/ in a line, as a path from the project's folder.
std::string linkedExample(std::string_view line) {
    const std::size_t begin = line.rfind("examples/");
    if (begin == std::string_view::npos) {
        return {};
    }
    return std::string(line.substr(begin, line.find_first_of(")]`", begin) - begin));
}

// Every fenced block with the example that is named last in front of it, under the same heading.
std::vector<Sample> samplesIn(const std::string& document) {
    constexpr std::string_view kFence = "```";
    std::vector<Sample> samples;
    std::istringstream lines(document);
    std::string named;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(kFence)) {
            const std::string example = linkedExample(line);
            named = line.starts_with("#") ? "" : example.empty() ? named : example;
            continue;
        }
        Sample sample{line.substr(kFence.size()), named, ""};
        while (std::getline(lines, line) && !line.starts_with(kFence)) {
            sample.code += line + "\n";
        }
        samples.push_back(sample);
    }
    return samples;
}

TEST(CodeSamples, AreFoundWithTheFileThatIsNamedBeforeThem) {
    const std::vector<Sample> samples = samplesIn(
        "# Title\nSee [one](../examples/one.cpp):\n\n```cpp\nint i;\n\nint j;\n```\n"
        "# Next\n```sh\nls\n```\n");

    ASSERT_EQ(samples.size(), 2U);
    EXPECT_EQ(samples[0].language, "cpp");
    EXPECT_EQ(samples[0].file, "examples/one.cpp");
    EXPECT_EQ(samples[0].code, "int i;\n\nint j;\n");
    EXPECT_EQ(samples[1].file, "");
}

TEST(CodeSamples, StandInTheExamplesThatAreTested) {
    std::size_t count = 0;
    for (const std::filesystem::path& document : documents()) {
        for (const Sample& sample : samplesIn(readText(document))) {
            if (sample.language != "cpp" && sample.language != "cmake") {
                continue;
            }
            ++count;
            ASSERT_FALSE(sample.file.empty()) << document.filename() << " names no example for\n"
                                              << sample.code;
            const std::string example = "\n" + readText(sourcePath(sample.file.c_str()));
            EXPECT_NE(example.find("\n" + sample.code), std::string::npos)
                << document.filename() << " differs from " << sample.file << "\n"
                << sample.code;
        }
    }
    EXPECT_GT(count, 0U);
}

}  // namespace
}  // namespace test_support
