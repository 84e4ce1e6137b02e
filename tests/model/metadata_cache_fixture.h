#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/cli_exif_metadata.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace test_support {

using Record = std::shared_ptr<const exiv2_wp::internal::CliExifMetadata>;

inline constexpr auto kPrintAll = "Exif.Image.Make Ascii 5 Maker\n";
inline constexpr auto kSummary = "Lens name       : EF24-70mm\n";
inline constexpr auto kSummaryThatRaises = "Lens name:";

/// The cache is one for the whole process and can't be emptied. Each test has a folder of its own,
/// and so files that the cache doesn't know.
class MetadataCacheFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(exiv2_wp::initialize(tool.path()));
        log.clear();
    }

    /// How often the tool was asked for all metadata, and for the summary.
    std::size_t printAllRuns() const { return tool.countCalls("-PXEkycv"); }
    std::size_t summaryRuns() const { return tool.countCalls("pr"); }

    LogCapture log;
    ToolDirectory tool;
};

}  // namespace test_support
