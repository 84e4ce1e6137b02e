#include "photos/real_exiv2.h"

#include <cstdio>
#include <set>

namespace test_support {

namespace fs = std::filesystem;

namespace {

[[maybe_unused]] const auto* const kUntouchedPhotos =
    ::testing::AddGlobalTestEnvironment(new UntouchedPhotos);

}  // namespace

RealExiv2::RealExiv2() {
    fs::create_symlink(EXIV2, folder_.path() / "exiv2.exe");
}

std::string printedByExiv2(const std::string& options, const fs::path& file) {
    const std::string command =
        std::string(EXIV2) + " " + options + " '" + file.string() + "' 2>/dev/null";
    std::FILE* const pipe = popen(command.c_str(), "r");
    std::string output;
    for (int c = 0; (c = std::fgetc(pipe)) != EOF;) {
        output += static_cast<char>(c);
    }
    return pclose(pipe) == 0 ? output : std::string();
}

std::string listing(const fs::path& folder) {
    std::set<std::string> lines;
    if (fs::is_directory(folder)) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            lines.insert(entry.path().filename().string() + ", " +
                         std::to_string(entry.file_size()) + " bytes, changed " +
                         std::to_string(entry.last_write_time().time_since_epoch().count()) + "\n");
        }
    }
    std::string text;
    for (const std::string& line : lines) {
        text += line;
    }
    return text;
}

void UntouchedPhotos::SetUp() {
    before_ = listing(PHOTOS);
}

void UntouchedPhotos::TearDown() {
    EXPECT_EQ(listing(PHOTOS), before_);
}

}  // namespace test_support
