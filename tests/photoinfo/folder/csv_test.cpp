#include "photoinfo/folder/csv.h"

#include <gtest/gtest.h>

#include <sstream>

namespace photoinfo {
namespace {

std::string record(const std::vector<std::string>& cells) {
    std::ostringstream stream;
    writeCsvRecord(stream, cells);
    return stream.str();
}

TEST(CsvRecord, IsPartedByCommasAndEndsTheLine) {
    EXPECT_EQ(record({"a", "", "c d"}), "a,,c d\r\n");
}

TEST(CsvRecord, QuotesWhatWouldEndACell) {
    EXPECT_EQ(record({"a,b", "a\nb", "a\rb"}), "\"a,b\",\"a\nb\",\"a\rb\"\r\n");
}

TEST(CsvRecord, DoublesQuotes) {
    EXPECT_EQ(record({"\"", "a\"b\""}), "\"\"\"\",\"a\"\"b\"\"\"\r\n");
}

TEST(CsvRecord, KeepsAllOtherBytes) {
    EXPECT_EQ(record({"=1+1", " a ", "\xFF\xC3\xA9"}), "=1+1, a ,\xFF\xC3\xA9\r\n");
}

}  // namespace
}  // namespace photoinfo
