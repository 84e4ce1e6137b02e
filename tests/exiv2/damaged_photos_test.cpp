// SPDX-License-Identifier: GPL-2.0-or-later
#include <random>

#include "exiv2/stock_tool.h"
#include "support/every_nth.h"
#include "support/read_file.h"
#include "support/skip_or_fail.h"

namespace exiv2_tool {
namespace {

namespace fs = std::filesystem;

/// Photos of several makers and formats, and the sample.
class DamagedPhoto : public BesideStockTool, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        const fs::path photo = fs::path(PHOTOS) / GetParam();  // an absolute path stays alone
        if (!fs::exists(photo)) {
            SKIP_OR_FAIL("no " + photo.string());
        }
        bytes = test_support::readFile(photo);
    }

    std::string bytes;
};

TEST_P(DamagedPhoto, CutOffIsReadAsByTheStockTool) {
    constexpr std::size_t kPoints = 16;
    for (std::size_t i = 1; i < kPoints; i += test_support::kEveryNthRun) {
        const std::size_t size = bytes.size() * i * i / (kPoints * kPoints);
        SCOPED_TRACE(size);
        expectTheSameOf(folder.makeFile("cut", bytes.substr(0, size)));
    }
}

TEST_P(DamagedPhoto, WithWrongBytesIsReadAsByTheStockTool) {
    constexpr int kRounds = 45 / test_support::kEveryNthRun;
    constexpr std::size_t kFront = 4096;  // where most of the metadata's structure lies
    std::mt19937 random(20261122);
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        std::string damaged = bytes;
        for (int change = 0; change <= round % 8; ++change) {
            const std::size_t range = round % 2 == 0 ? bytes.size() : kFront;
            damaged[random() % std::min(range, bytes.size())] = static_cast<char>(random());
        }
        expectTheSameOf(folder.makeFile("damaged", damaged));
    }
}

INSTANTIATE_TEST_SUITE_P(Table, DamagedPhoto,
                         ::testing::Values("Canon1DmkIII.jpg", "Nikon.nef", "FujiFilm.raf",
                                           "Pentax.jpg", "PNG.png", "XMP.jpg", SAMPLE));

}  // namespace
}  // namespace exiv2_tool
