// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <map>

#include "exiv2/tool_fixture.h"
#include "support/photo_list.h"

namespace exiv2_tool {
namespace {

namespace fs = std::filesystem;

class ManyFiles : public ToolTest {
protected:
    [[nodiscard]] ProgramResult read(const std::vector<fs::path>& files) const {
        Call arguments = {"--read"};
        arguments.insert(arguments.end(), files.begin(), files.end());
        return call(arguments);
    }

    /// What the two ordinary runs say of each file, put together.
    [[nodiscard]] std::string readOneByOne(const std::vector<fs::path>& files) const {
        std::map<fs::path, std::string> parts;
        std::string expected;
        for (std::size_t i = 0; i < files.size(); ++i) {
            std::string& part = parts[files[i]];
            if (part.empty()) {
                part = readAlone(files[i]);
            }
            expected += std::to_string(i) + part;
        }
        return expected;
    }

    /// A file's part of the answer, behind its position.
    [[nodiscard]] std::string readAlone(const fs::path& file) const {
        const ProgramResult entries = call({"-PXEkycv", "-q", file});
        const ProgramResult summary = call({"pr", file});
        std::string part;
        for (const ProgramResult& result : {entries, summary}) {
            part +=
                ' ' + std::to_string(result.exitCode) + ' ' + std::to_string(result.output.size());
        }
        return part + '\n' + entries.output + summary.output;
    }

    /// An XMP file with a property of a namespace of its own.
    [[nodiscard]] fs::path makeSidecar(const std::string& name, const std::string& prefix) const {
        return folder.makeFile(
            name,
            "<?xpacket begin='\xef\xbb\xbf' id='W5M0MpCehiHzreSzNTczkc9d'?>"
            "<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
            "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
            "<rdf:Description rdf:about='' xmlns:" +
                prefix + "='http://own.example/'><" + prefix + ":Thing>own</" + prefix +
                ":Thing></rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end='w'?>");
    }
};

TEST_F(ManyFiles, AreAnsweredAsByTheOrdinaryRuns) {
    std::vector<fs::path> files = test_support::listFiles(PHOTOS);
    std::erase(files, fs::path());
    files.emplace_back(SAMPLE);
    files.push_back(folder.makeFile("text.jpg", "no image"));
    std::vector<fs::path> twice = files;
    twice.insert(twice.end(), files.rbegin(), files.rend());

    const ProgramResult result = read(twice);

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, readOneByOne(twice));
}

TEST_F(ManyFiles, HaveNoSayInEachOther) {
    const std::vector<fs::path> files = {makeSidecar("a.xmp", "one"), makeSidecar("b.xmp", "two"),
                                         makeSidecar("c.xmp", "one")};

    const std::string output = read(files).output;

    EXPECT_EQ(output, readOneByOne(files));
    EXPECT_THAT(output, ::testing::HasSubstr("Xmp.two.Thing"));
}

TEST_F(ManyFiles, ThatCantBeReadEndNothing) {
    const fs::path photo = makePhoto("photo.jpg", {});
    const fs::path missing = folder.path() / "missing.jpg";

    const ProgramResult result = read({missing, photo, folder.path()});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.output, ::testing::StartsWith("0 1 0 1 0\n1 0 "));
    EXPECT_TRUE(result.output.ends_with("2 1 0 1 0\n"));
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 2);
    EXPECT_THAT(result.error, ::testing::StartsWith("exiv2.exe: " + missing.string() + ": "));
}

}  // namespace
}  // namespace exiv2_tool
