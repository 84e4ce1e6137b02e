// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/value_text.h"

#include <gtest/gtest.h>

#include <sstream>

namespace exiv2_tool {
namespace {

struct ValueCase {
    const char* name;
    Exiv2::TypeId type;
    std::string text;  ///< what the value is read from
};

class ValueText : public ::testing::TestWithParam<ValueCase> {};

TEST_P(ValueText, IsWhatTheStreamGets) {
    const auto value = Exiv2::Value::create(GetParam().type);
    ASSERT_EQ(value->read(GetParam().text), 0);
    std::ostringstream expected;
    expected << *value;

    std::string text = "before ";
    appendValue(text, *value);

    EXPECT_EQ(text, "before " + expected.str());
}

const ValueCase kValues[] = {
    {"Bytes", Exiv2::unsignedByte, "0 9 10 99 100 255"},
    {"Undefined", Exiv2::undefined, "48 50 50 48"},
    {"Ascii", Exiv2::asciiString, "Canon EOS 6D"},
    {"AsciiWithZero", Exiv2::asciiString, std::string("left\0right", 10)},
    {"Shorts", Exiv2::unsignedShort, "0 65535 1"},
    {"Longs", Exiv2::unsignedLong, "0 4294967295"},
    {"SignedShorts", Exiv2::signedShort, "-32768 32767 0"},
    {"SignedLongs", Exiv2::signedLong, "-2147483648 2147483647"},
    {"Rationals", Exiv2::unsignedRational, "1/250 4294967295/0"},
    {"SignedRationals", Exiv2::signedRational, "-1/3 -2147483648/-1"},
    {"Float", Exiv2::tiffFloat, "1.5 -0.1 1e+30"},
    {"Double", Exiv2::tiffDouble, "3.141592653589793 0.1"},
    {"Comment", Exiv2::comment, "charset=Ascii A comment"},
    {"XmpText", Exiv2::xmpText, "four"},
    {"XmpBag", Exiv2::xmpBag, "one"},
    {"LangAlt", Exiv2::langAlt, "lang=de-DE Guten Tag"},
    {"Date", Exiv2::date, "2026-11-22"},
};

INSTANTIATE_TEST_SUITE_P(Table, ValueText, ::testing::ValuesIn(kValues),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace exiv2_tool
