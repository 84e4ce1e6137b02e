#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photos/independent_reading.h"
#include "support/exported_text.h"
#include "support/photo_list.h"
#include "support/skip_or_fail.h"
#include "support/tool_directory.h"

// Print-outs of real photos, recorded by scripts/record_printouts.sh where the tool runs, played
// back where the tests run.

namespace exiv2_wp {
namespace {

namespace fs = std::filesystem;
using test_support::readFile;
using test_support::toText;

fs::path beside(fs::path printAll, const char* suffix) {
    return printAll.replace_extension(suffix);
}

int exitCode(const fs::path& file) {
    return std::stoi(readFile(file));
}

class RecordedPhoto : public ::testing::TestWithParam<fs::path> {};

TEST_P(RecordedPhoto, IsSummedUpAsItsPrintOutSays) {
    const fs::path& recorded = GetParam();
    if (recorded.empty()) {
        SKIP_OR_FAIL("no print-outs: EXIV2_WRAPPER_PRINTOUTS names no folder with some");
    }
    const std::string printAll = readFile(recorded);
    test_support::ToolDirectory tool;
    tool.answer({"-PXEkycv", "-q"},
                {.output = printAll, .exitCode = exitCode(beside(recorded, ".print_all_exit"))});
    tool.answer({"pr"}, {.output = readFile(beside(recorded, ".summary")),
                         .exitCode = exitCode(beside(recorded, ".summary_exit"))});
    ASSERT_TRUE(initialize(tool.path()));

    std::vector<std::string> summaries;
    createImageMetadata(tool.makeFile(recorded.stem().string()),
                        [&](const SExivMetadataInfo& info) { summaries.push_back(toText(info)); });

    EXPECT_EQ(summaries,
              std::vector<std::string>{toText(test_support::readIndependently(printAll))});
}

INSTANTIATE_TEST_SUITE_P(Photos, RecordedPhoto,
                         ::testing::ValuesIn(test_support::listFiles(test_support::printoutFolder(),
                                                                     ".print_all")),
                         test_support::photoName);

}  // namespace
}  // namespace exiv2_wp
