#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string_view>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace exiv2_wp {

/// One photo and a tool that is told what to print about it.
class PhotoWithTool : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(initialize(tool.path()));
        log.clear();
    }

    /// What the two runs that read the metadata print. Without it both fail.
    void photoHas(std::string_view printAll, std::string_view summary = "") {
        tool.answerMetadata(printAll, summary);
    }

    test_support::LogCapture log;
    test_support::ToolDirectory tool;
    std::filesystem::path file = tool.makeFile("photo.jpg");
};

}  // namespace exiv2_wp
