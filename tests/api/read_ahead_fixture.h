#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace test_support {

/// A tool that knows the call for many files, and files that nobody has asked about.
class ReadAheadFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(exiv2_wp::initialize(tool.path()));
        log.clear();
        tool.knowReadCall();
    }

    std::filesystem::path file(const std::string& name) const { return tool.path() / name; }

    /// How often the tool was called for many files, and for one.
    std::size_t readCalls() const { return tool.countCalls("--read"); }
    std::size_t printAllRuns() const { return tool.countCalls("-PXEkycv"); }

    LogCapture log;
    ToolDirectory tool;
};

}  // namespace test_support
