#include "hostile/hostile_photo.h"

#include "support/run_program.h"
#include "support/skip_or_fail.h"

namespace test_support {

namespace fs = std::filesystem;

void HostilePhoto::SetUp() {
    if (!fs::exists(EXIV2) || !fs::exists(EXIFTOOL)) {
        SKIP_OR_FAIL("exiv2 and exiftool have to be installed for this");
    }
    fs::create_symlink(EXIV2, tools() / "exiv2.exe");
    fs::create_symlink(EXIFTOOL, tools() / "exiftool.exe");
    ASSERT_TRUE(exiv2_wp::initialize(tools()));
    log.clear();
}

fs::path HostilePhoto::makePhoto(const std::string& name,
                                 const std::vector<std::string>& changes) const {
    const fs::path photo = folder() / name;
    fs::copy_file(SAMPLE, photo);
    if (!changes.empty()) {
        change({photo}, changes);
    }
    return photo;
}

void HostilePhoto::change(const std::vector<fs::path>& photos,
                          const std::vector<std::string>& changes) const {
    std::vector<std::string> arguments = {"-q", "-overwrite_original"};
    arguments.insert(arguments.end(), changes.begin(), changes.end());
    arguments.insert(arguments.end(), photos.begin(), photos.end());
    const ProgramResult result = runProgram(EXIFTOOL, arguments, tools());
    EXPECT_EQ(result.exitCode, 0) << result.error;
}

fs::path HostilePhoto::makeSidecar(const std::string& name, const std::string& properties) const {
    return photos_.makeFile(name,
                            "<?xpacket begin=\"\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>"
                            "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">"
                            "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
                            "<rdf:Description rdf:about=\"\" xmlns:hostile=\"urn:hostile\" "
                            "xmlns:exifEX=\"http://cipa.jp/exif/1.0/\" " +
                                properties + "/></rdf:RDF></x:xmpmeta><?xpacket end=\"w\"?>");
}

std::string HostilePhoto::printedTag(const fs::path& file, const std::string& tag) const {
    return runProgram(EXIFTOOL, {"-s3", "-" + tag, file.string()}, tools()).output;
}

std::map<std::string, std::string> HostilePhoto::snapshot() const {
    std::map<std::string, std::string> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder())) {
        files[entry.path().filename().string()] = readFile(entry.path());
    }
    return files;
}

std::string HostilePhoto::readTag(const fs::path& file, const char* key) {
    std::string value = "none";
    exiv2_wp::ExivReader(file.string()).getRawExifTag(key, value);
    return value;
}

exiv2_wp::SExivMetadataInfo HostilePhoto::summarize(const fs::path& file) {
    exiv2_wp::SExivMetadataInfo summary;
    exiv2_wp::createImageMetadata(file,
                                  [&](const exiv2_wp::SExivMetadataInfo& info) { summary = info; });
    return summary;
}

}  // namespace test_support
