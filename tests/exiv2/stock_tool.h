// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "exiv2/tool_fixture.h"

namespace exiv2_tool {

/// Our tool beside the stock one.
class BesideStockTool : public ToolTest {
protected:
    /// Runs the stock tool. Its lines end as ours do.
    [[nodiscard]] ProgramResult callStock(const Call& arguments) const;
    /// Expects that "-PXEkycv" prints the same, less the maker-note blobs, and that it and "pr"
    /// fail for the same files.
    void expectTheSameOf(const std::filesystem::path& file) const;

private:
    test_support::TemporaryDirectory stockOutputs_;
};

}  // namespace exiv2_tool
