// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/stock_tool.h"

#include <algorithm>
#include <sstream>

#include "exiv2/entries.h"
#include "exiv2/photo.h"
#include "support/every_nth.h"
#include "support/photo_list.h"
#include "support/skip_or_fail.h"

namespace exiv2_tool {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> sortedLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

template <typename Entries>
void addKeys(std::set<std::string>& keys, const Entries& entries) {
    for (const auto& entry : entries) {
        keys.insert(entry.key());
    }
}

/// What `print` says about every key; nothing about those that it doesn't know.
template <typename Print>
std::map<std::string, std::string> printEach(const std::set<std::string>& keys,
                                             const Exiv2::Image& image, const Print& print) {
    std::map<std::string, std::string> printed;
    for (const std::string& key : keys) {
        std::string output;
        try {
            print(output, image, key);
            printed[key] = output;
        } catch (const std::invalid_argument&) {
        }
    }
    return printed;
}

/// The bytes in the dumps of a stock print-out, by key, as we print them; of several dumps of a key
/// the first. A line of a dump is an offset, at most sixteen numbers and the same as text.
std::map<std::string, std::string> bytesOfDumps(const std::string& printOut) {
    constexpr std::size_t kNumberWidth = 3;
    std::map<std::string, std::string> dumps;
    std::string* dump = nullptr;
    std::istringstream stream(printOut);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("Exif.")) {
            const std::string key = line.substr(0, line.find(' '));
            const auto [found, isNew] = dumps.emplace(key, key);
            dump = isNew ? &found->second : nullptr;
        } else if (dump != nullptr && !line.empty()) {
            const std::size_t numbers = line.find("  ", 2) + 2;
            for (std::size_t i = numbers; i < numbers + 16 * kNumberWidth && line[i] != ' ';
                 i += kNumberWidth) {
                *dump += ' ' + line.substr(i, 2);
            }
        }
    }
    for (auto& [key, text] : dumps) {
        text += '\n';
    }
    return dumps;
}

class PhotoBesideStockTool : public BesideStockTool,
                             public ::testing::WithParamInterface<fs::path> {
protected:
    void SetUp() override {
        if (GetParam().empty()) {
            SKIP_OR_FAIL("no photos in " PHOTOS);
        }
        Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    }
};

TEST_P(PhotoBesideStockTool, PrintsTheSameEntries) {
    expectTheSameOf(GetParam());
}

TEST_P(PhotoBesideStockTool, PrintsTheSameInterpretedValueOfEachKey) {
    const Photo photo(GetParam().c_str());
    std::set<std::string> keys;
    addKeys(keys, photo.image().exifData());
    addKeys(keys, photo.image().iptcData());
    addKeys(keys, photo.image().xmpData());

    std::string all;
    for (const auto& [key, printed] : printEach(keys, photo.image(), printInterpreted)) {
        all += printed;
    }

    EXPECT_EQ(sortedLines(all), sortedLines(callStock({"--Print", "kt", GetParam()}).output));
}

TEST_P(PhotoBesideStockTool, PrintsTheBytesOfItsDumps) {
    const Photo photo(GetParam().c_str());
    std::set<std::string> keys;
    addKeys(keys, photo.image().exifData());

    EXPECT_EQ(printEach(keys, photo.image(), printBytes),
              bytesOfDumps(callStock({"--Print", "Ekh", GetParam()}).output));
}

INSTANTIATE_TEST_SUITE_P(Photos, PhotoBesideStockTool,
                         ::testing::ValuesIn(test_support::sampleFiles(PHOTOS)),
                         test_support::photoName);
INSTANTIATE_TEST_SUITE_P(Sample, PhotoBesideStockTool, ::testing::Values(SAMPLE),
                         test_support::photoName);

TEST_F(BesideStockTool, AnswersACallForEachKeyOfTheSampleAlike) {
    const Photo photo(fs::path(SAMPLE).c_str());
    std::set<std::string> keys;
    addKeys(keys, photo.image().exifData());
    addKeys(keys, photo.image().xmpData());
    int position = 0;
    for (const std::string& key : keys) {
        if (position++ % test_support::kEveryNthRun != 0) {
            continue;
        }
        const Call arguments = {"--key", key, "--Print", "kt", SAMPLE};
        const ProgramResult ours = call(arguments);
        const ProgramResult stock = callStock(arguments);
        EXPECT_EQ(ours.output, stock.output) << key;
        EXPECT_EQ(ours.exitCode, stock.exitCode) << key;
    }
}

TEST_F(BesideStockTool, PrintsTheSameOfImagesOfOtherKinds) {
    const Bytes bare = makeJpeg({64, 48});
    const std::string jpeg(bare.begin(), bare.end());
    // A grey pixel.
    const std::string png(
        "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\b\0\0\0\0:~\x9bU\0\0\0\nIDATx\x9c"
        "c`\0\0\0\2\0\1"
        "H\xaf\xa4q\0\0\0\0IEND\xae"
        "B`\x82",
        67);
    const auto signedBytes = Exiv2::Value::create(Exiv2::signedByte);
    ASSERT_EQ(signedBytes->read("-128 -1 0 127"), 0);
    const std::string sidecar =
        "<?xpacket begin='\xef\xbb\xbf' id='W5M0MpCehiHzreSzNTczkc9d'?>"
        "<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
        "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
        "<rdf:Description rdf:about='' xmlns:xmp='http://ns.adobe.com/xap/1.0/'"
        " xmlns:own='http://own.example/'>"
        "<xmp:Rating>4</xmp:Rating><own:Thing>own</own:Thing></rdf:Description></rdf:RDF>"
        "</x:xmpmeta><?xpacket end='w'?>";
    for (const auto& [name, bytes] : std::map<std::string, std::string>{
             {"bare.jpg", jpeg},
             {"xmp.jpg", withEntry(jpeg, "Xmp.dc.title", "lang=x-default A title")},
             {"bag.jpg", withEntry(jpeg, "Xmp.dc.subject", "a keyword")},
             {"comment.jpg", withEntry(jpeg, "Exif.Photo.UserComment", "charset=Ascii Comment")},
             {"float.jpg", withEntry(jpeg, "Exif.Image.0xc71a", "1")},
             {"signed.jpg", withEntry(jpeg, "Exif.Photo.SceneType", *signedBytes)},
             {"bare.png", png},
             {"xmp.png", withEntry(png, "Xmp.xmp.Rating", "4")},
             {"exif.png", withEntry(png, "Exif.Image.Model", "A camera")},
             {"sidecar.xmp", sidecar},
             {"text.jpg", "no image"},
             {"empty.jpg", ""}}) {
        SCOPED_TRACE(name);
        expectTheSameOf(folder.makeFile(name, bytes));
    }
}

}  // namespace
}  // namespace exiv2_tool
