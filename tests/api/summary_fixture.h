#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "exiv2_wrapper/api/image_metadata_summary.h"
#include "support/log_capture.h"

namespace test_support {

/// A record put together tag by tag, its summary, and what is logged on the way.
class SummaryFixture : public ::testing::Test {
protected:
    LogCapture log;
    exiv2_wp::internal::CliExifMetadata record;

    void addText(const std::string& key, const std::string& value) {
        record.tags[kept(key)] = {kept(key), "ascii", kept(value), {}, {}, 1};
    }
    void addIntegers(const std::string& key, const exiv2_wp::internal::IntegerList& integers) {
        record.tags[kept(key)] = {kept(key), "short", "?", {}, integers, 1};
    }
    void addRationals(const std::string& key, const exiv2_wp::internal::RationalList& rationals) {
        record.tags[kept(key)] = {kept(key), "rational", "?", rationals, {}, 1};
    }

    [[nodiscard]] exiv2_wp::SExivMetadataInfo summary() const {
        return exiv2_wp::internal::summarize(record);
    }

private:
    std::string_view kept(const std::string& text) {
        record.texts.push_back(std::make_shared<const std::string>(text));
        return *record.texts.back();
    }
};

}  // namespace test_support
