// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/stock_tool.h"

#include <string_view>

namespace exiv2_tool {
namespace {

// "pr" of an image without Exif data.
constexpr int kNoExifData = 253;

/// A print-out without its maker-note blobs. Their value may have lines of its own.
std::string withoutBlobs(std::string_view printOut) {
    std::string kept;
    bool isBlob = false;
    while (!printOut.empty()) {
        const std::string_view line = printOut.substr(0, printOut.find('\n') + 1);
        if (line.starts_with("Exif.") || line.starts_with("Xmp.")) {
            isBlob = line.starts_with("Exif.Photo.MakerNote ") ||
                     line.starts_with("Exif.Image.MakerNote ");
        }
        if (!isBlob) {
            kept += line;
        }
        printOut.remove_prefix(line.empty() ? printOut.size() : line.size());
    }
    return kept;
}

}  // namespace

ProgramResult BesideStockTool::callStock(const Call& arguments) const {
    std::vector<test_support::NativeString> texts;
    for (const std::filesystem::path& argument : arguments) {
        texts.push_back(argument.native());
    }
    ProgramResult result = test_support::runProgram(STOCK_EXIV2, texts, stockOutputs_.path());
    for (std::size_t end = 0; (end = result.output.find("\r\n", end)) != std::string::npos;) {
        result.output.erase(end, 1);
    }
    return result;
}

void BesideStockTool::expectTheSameOf(const std::filesystem::path& file) const {
    const ProgramResult ours = call({"-PXEkycv", "-q", file});
    const ProgramResult stock = callStock({"-PXEkycv", "-q", file});
    EXPECT_EQ(ours.exitCode != 0, stock.exitCode != 0) << ours.error << stock.error;
    EXPECT_EQ(ours.output, withoutBlobs(stock.output));

    const ProgramResult summary = call({"pr", file});
    const int stockCode = callStock({"pr", file}).exitCode;
    EXPECT_EQ(summary.exitCode != 0, stockCode != 0 && stockCode != kNoExifData) << summary.error;
}

}  // namespace exiv2_tool
