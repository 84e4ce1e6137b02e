#pragma once

#include <gtest/gtest.h>

#include <string>

namespace test_support {

/// Names the tests of a table by its rows' `name`.
template <typename Case>
std::string caseName(const ::testing::TestParamInfo<Case>& row) {
    return row.param.name;
}

}  // namespace test_support
