// SPDX-License-Identifier: GPL-2.0-or-later
#include "dispatcher/call_kind.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace exiv2_companion {
namespace {

struct CallKindCase {
    const char* name;
    std::vector<std::string> arguments;
    CallKind kind;
};

class CallKinds : public ::testing::TestWithParam<CallKindCase> {};

TEST_P(CallKinds, AreToldByTheArguments) {
    std::vector<std::string> texts = GetParam().arguments;
    std::vector<char*> arguments;
    for (std::string& text : texts) {
        arguments.push_back(text.data());
    }

    EXPECT_EQ(kindOf(arguments), GetParam().kind);
}

const CallKindCase kCases[] = {
    {"NothingAtAll", {}, CallKind::passOn},
    {"NoArguments", {"exiv2.exe"}, CallKind::passOn},
    {"Version", {"exiv2.exe", "--version"}, CallKind::passOn},
    {"PrintAll", {"exiv2.exe", "-PXEkycv", "-q", "a.jpg"}, CallKind::passOn},
    {"Preview", {"exiv2.exe", "-ep", "a.jpg", "1", "1"}, CallKind::preview},
    {"PreviewWithFormat", {"exiv2.exe", "-ep", "a.nef", "1", "1", "NEF"}, CallKind::preview},
    {"PreviewWithBadSizes", {"exiv2.exe", "-ep", "a.jpg", "b", ""}, CallKind::preview},
    {"StockPreview", {"exiv2.exe", "-ep", "a.jpg"}, CallKind::passOn},
    {"StockPreviewOfTwoFiles", {"exiv2.exe", "-ep", "a.jpg", "b.jpg"}, CallKind::passOn},
    {"PreviewWithMore", {"exiv2.exe", "-ep", "a", "1", "1", "x", "y"}, CallKind::passOn},
    {"PreviewByNumber", {"exiv2.exe", "-ep1", "a.jpg", "1", "1"}, CallKind::passOn},
    {"Summary", {"exiv2.exe", "pr", "a.jpg"}, CallKind::summary},
    {"SummaryOfNoFile", {"exiv2.exe", "pr"}, CallKind::passOn},
    {"SummaryOfTwoFiles", {"exiv2.exe", "pr", "a.jpg", "b.jpg"}, CallKind::passOn},
    {"SummaryWithOption", {"exiv2.exe", "pr", "-v"}, CallKind::passOn},
    {"SummaryOfStandardInput", {"exiv2.exe", "pr", "-"}, CallKind::passOn},
    {"SummaryOfAnEmptyName", {"exiv2.exe", "pr", ""}, CallKind::summary},
    {"OtherCase", {"exiv2.exe", "PR", "a.jpg"}, CallKind::passOn},
};

INSTANTIATE_TEST_SUITE_P(Table, CallKinds, ::testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace exiv2_companion
