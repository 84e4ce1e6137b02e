#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "exiv2_wrapper/api/image_metadata_summary.h"
#include "support/log_capture.h"

namespace test_support {

/// A record put together tag by tag, its summary, and what is logged on the way.
class SummaryFixture : public ::testing::Test {
protected:
    using Integers = std::vector<std::int64_t>;
    using Rationals = std::vector<std::pair<std::int64_t, std::int64_t>>;

    LogCapture log;
    exiv2_wp::internal::CliExifMetadata record;

    void addText(const std::string& key, const std::string& value) {
        record.tags[key] = {key, "ascii", value, {}, {}, 1};
    }
    void addIntegers(const std::string& key, const Integers& integers) {
        record.tags[key] = {key, "short", "?", {}, integers, 1};
    }
    void addRationals(const std::string& key, const Rationals& rationals) {
        record.tags[key] = {key, "rational", "?", rationals, {}, 1};
    }

    [[nodiscard]] exiv2_wp::SExivMetadataInfo summary() const {
        return exiv2_wp::internal::summarize(record);
    }
};

}  // namespace test_support
