#include "real_exiftool/real_tool.h"

#include "exiftool/host_program.h"

namespace test_support {

namespace {

namespace fs = std::filesystem;

// The installed tool has another name than the library looks for.
fs::path linkedTool() {
    static const TemporaryDirectory folder("real-exiftool-");
    const fs::path link = folder.path() / "exiftool.exe";
    if (!fs::exists(link)) {
        fs::create_symlink(REAL_EXIFTOOL, link);
    }
    return folder.path();
}

}  // namespace

fs::path realToolFolder() {
    const fs::path tool = REAL_EXIFTOOL;
    if (!fs::exists(tool)) {
        return {};
    }
    return tool.filename() == "exiftool.exe" ? tool.parent_path() : linkedTool();
}

void copyRealToolTo(const fs::path& folder) {
    fs::create_directories(folder);
    fs::copy(realToolFolder(), folder,
             fs::copy_options::recursive | fs::copy_options::copy_symlinks);
}

ProgramResult runRealTool(const std::vector<std::string>& arguments) {
    const TemporaryDirectory folder("real-exiftool-run-");
    std::vector<std::string> all = {"-charset", "filename=utf8"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    ProgramResult result =
        runProgram(realToolFolder() / "exiftool.exe", nativeArguments(all), folder.path());
    std::erase(result.output, '\r');
    std::erase(result.error, '\r');
    return result;
}

}  // namespace test_support
