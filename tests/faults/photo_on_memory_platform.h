#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "faults/fresh_file.h"
#include "faults/memory_platform.h"

namespace test_support {

/// Photos of which the tool tells something for every reader, on a platform in memory.
class PhotoOnMemoryPlatform : public ::testing::Test {
protected:
    void SetUp() override {
        MemoryPlatform& platform = memoryPlatform();
        platform.reset();
        platform.answer("-PXEkycv", {.output = kPrintAll});
        platform.answer("pr", {.output = kSummary});
        platform.answer("-ep", {.output = "4 3 0 0 0 0\nJPEG"});
        platform.answer("--key", {.output = "Exif.Image.Make 4d 61\n"});
        exiv2_wp::internal::exiv2ExecutablePath = "exiv2.exe";
    }
    void TearDown() override { exiv2_wp::internal::exiv2ExecutablePath.clear(); }

    /// Every handle is closed and every process waited for, once each.
    static void expectNothingLeft() {
        EXPECT_EQ(memoryPlatform().countOpen(), 0U);
        EXPECT_EQ(memoryPlatform().misuses(), std::vector<std::string>{});
    }

    static constexpr auto kPrintAll =
        "Exif.Image.Make Ascii 20 A maker with a long name\n"
        "Exif.Image.Model Ascii 20 A model with a long name\n"
        "Exif.Image.Orientation Short 1 6\n"
        "Exif.Photo.FNumber Rational 1 28/10\n"
        "Exif.Photo.ISOSpeedRatings Short 1 100\n"
        "Exif.Photo.DateTimeOriginal Ascii 20 2021:07:04 18:30:05\n"
        "Exif.Photo.LensModel Ascii 30 A lens of 24-70mm with a long name\n"
        "Xmp.dc.subject XmpBag 2 one subject, and then another one\n"
        "Xmp.xmp.Rating XmpText 1 4\n";
    static constexpr auto kSummary = "Lens name       : A lens of 24-70mm with a long name\n";
};

}  // namespace test_support
