// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <sstream>

#include "companion/companion_fixture.h"
#include "reader/payload.h"
#include "support/read_file.h"
#include "support/skip_or_fail.h"

/// The companion and the real exiv2 on real camera files.
namespace companion_tests {
namespace {

using exiv2_companion::PixelSize;
using test_support::readFile;

namespace fs = std::filesystem;

class CameraFiles : public Companion {
protected:
    void SetUp() override {
        if (fs::is_directory(PHOTOS)) {
            fs::copy(PHOTOS, folder.path());
            for (const auto& entry : fs::directory_iterator(folder.path())) {
                files.push_back(entry.path());
            }
            std::sort(files.begin(), files.end());
        } else {
            SKIP_OR_FAIL("no camera files in " PHOTOS);
        }
    }

    /// Copies, so that a file written beside one would be seen and does no harm.
    std::vector<fs::path> files;
};

/// The previews that the real exiv2 lists for a file, each on a line such as
/// "Preview 1: image/jpeg, 160x120 pixels, 6702 bytes".
std::vector<PixelSize> listedPreviews(const fs::path& file) {
    std::istringstream list(runProgram(REAL_EXIV2, {"-pp", file.native()}).output);
    std::vector<PixelSize> sizes;
    std::string start;
    while (std::getline(list, start, ',')) {
        PixelSize size;
        char times = 0;
        list >> size.width >> times >> size.height;
        sizes.push_back(size);
        std::getline(list, start);
    }
    return sizes;
}

/// Whether the payload is an image of the announced size.
bool holdsTheAnnouncedImage(const PreviewAnswer& answer) {
    const bool isJpeg = answer.payload.starts_with("\xff\xd8");
    const Bytes bytes(answer.payload.begin(), answer.payload.end());
    return exiv2_companion::payloadSize(bytes, isJpeg ? "image/jpeg" : "image/tiff", answer.size) ==
           answer.size;
}

TEST_F(CameraFiles, GiveImagesOfTheAnnouncedSize) {
    std::size_t images = 0;
    for (const fs::path& file : files) {
        const ProgramEnd end = call({"-ep", file.native(), "100", "100"});
        if (end.exitCode != 0) {
            EXPECT_EQ(end.output, "") << file;
            continue;
        }
        const std::optional<PreviewAnswer> answer = takeApart(end.output);
        ASSERT_TRUE(answer.has_value()) << file;
        EXPECT_TRUE(holdsTheAnnouncedImage(*answer)) << file;
        const std::vector<PixelSize> listed = listedPreviews(file);
        EXPECT_EQ(std::count(listed.begin(), listed.end(), answer->size), 1) << file;
        ++images;
    }
    EXPECT_GE(images, 15U);
}

TEST_F(CameraFiles, OfTwoPreviewsGiveTheOneThatSuits) {
    const fs::path file = folder.path() / "FujiFilm.raf";
    ASSERT_EQ(listedPreviews(file), (std::vector<PixelSize>{{8, 8}, {160, 120}}));
    const auto size = [&](const char* wanted) {
        return takeApart(call({"-ep", file.native(), wanted, wanted, "raf"}).output)->size;
    };

    EXPECT_EQ(size("8"), (PixelSize{8, 8}));
    EXPECT_EQ(size("9"), (PixelSize{160, 120}));
    EXPECT_EQ(size("1000"), (PixelSize{160, 120}));
}

TEST_F(CameraFiles, GiveNoPreviewWhosePixelsAreMissing) {
    const fs::path file = folder.path() / "CanonRaw.cr2";
    ASSERT_EQ(listedPreviews(file), (std::vector<PixelSize>{{384, 256}}));

    EXPECT_EQ(
        call({"-ep", file.native(), "1", "1"}),
        (ProgramEnd{1, "",
                    "exiv2 companion: " + file.native() + ": no preview that holds an image\n"}));
}

TEST_F(CameraFiles, KeepTheirLensLineAndTheToolsSummary) {
    for (const auto& [name, lens] : std::vector<std::pair<std::string, std::string>>{
             {"Nikon.nef", "Nikon AF-S DX Zoom-Nikkor 18-70mm f/3.5-4.5G IF-ED"},
             {"NikonD2Hs.jpg", "Nikon AF Nikkor 50mm f/1.8D"},
             {"Pentax.jpg", "Sigma AF 10-20mm F4-5.6 EX DC"},
             {"Canon.jpg", ""},
             {"Canon1DmkIII.jpg", ""}}) {
        const std::string file = (folder.path() / name).native();
        ProgramEnd expected = runProgram(REAL_EXIV2, {"pr", file});
        expected.output.insert(0, lens.empty() ? "" : "Lens name       : " + lens + "\n");
        EXPECT_EQ(runProgram(COMPANION, {"pr", file}), expected) << name;
    }
}

TEST_F(CameraFiles, AnswerEveryOtherCallAsTheInstalledToolDoes) {
    for (const fs::path& file : files) {
        const std::vector<std::string> arguments = {"-PXEkycv", "-q", file.native()};
        EXPECT_EQ(runProgram(COMPANION, arguments), runProgram(REAL_EXIV2, arguments)) << file;
    }
}

TEST_F(CameraFiles, AreLeftAlone) {
    const std::set<fs::path> names = namesIn(folder.path());
    for (const fs::path& file : files) {
        const std::string bytes = readFile(file);
        (void)call({"-ep", file.native(), "200", "200"});
        (void)call({"pr", file.native()});
        EXPECT_TRUE(readFile(file) == bytes) << file;
    }
    EXPECT_EQ(namesIn(folder.path()), names);
}

TEST_F(CameraFiles, CutAnywhereGiveAnImageOrAFailure) {
    const std::string bytes = readFile(folder.path() / "FujiFilm.raf");
    ASSERT_FALSE(bytes.empty());
    for (std::size_t size = 0; size < bytes.size(); size += bytes.size() / 60) {
        const fs::path file = folder.makeFile("cut.raf", bytes.substr(0, size));
        const ProgramEnd end = call({"-ep", file.native(), "100", "100"});
        const std::optional<PreviewAnswer> answer = takeApart(end.output);
        EXPECT_TRUE(answer ? end.exitCode == 0 && holdsTheAnnouncedImage(*answer)
                           : end.exitCode == 1 && end.output.empty())
            << size;
    }
}

TEST_F(Companion, ReadsTheSample) {
    const std::optional<PreviewAnswer> answer =
        takeApart(call({"-ep", SAMPLE, "100", "100"}).output);
    ASSERT_TRUE(answer.has_value());
    EXPECT_TRUE(holdsTheAnnouncedImage(*answer));
    EXPECT_TRUE(runProgram(COMPANION, {"pr", SAMPLE}).output.starts_with("Lens name       : "));
}

}  // namespace
}  // namespace companion_tests
