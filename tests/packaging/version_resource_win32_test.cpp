#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

/// What the Explorer shows of our files and installers compare.
namespace {

using std::filesystem::path;

class VersionResource : public ::testing::TestWithParam<path> {
protected:
    void SetUp() override {
        const std::wstring file = GetParam().native();
        DWORD ignored = 0;
        data_.resize(GetFileVersionInfoSizeW(file.c_str(), &ignored));
        ASSERT_FALSE(data_.empty());
        ASSERT_TRUE(
            GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(data_.size()), data_.data()));
    }

    std::wstring text(const std::wstring& name) {
        void* value = nullptr;
        UINT length = 0;
        const std::wstring key = L"\\StringFileInfo\\040904b0\\" + name;
        const BOOL isFound = VerQueryValueW(data_.data(), key.c_str(), &value, &length);
        return isFound != 0 ? static_cast<const wchar_t*>(value) : L"not found";
    }

    // All zero when there is none.
    VS_FIXEDFILEINFO numbers() {
        void* value = nullptr;
        UINT length = 0;
        const BOOL isFound = VerQueryValueW(data_.data(), L"\\", &value, &length);
        return isFound != 0 ? *static_cast<const VS_FIXEDFILEINFO*>(value) : VS_FIXEDFILEINFO{};
    }

private:
    std::vector<char> data_;
};

std::wstring versionIn(const VS_FIXEDFILEINFO& numbers) {
    return std::to_wstring(HIWORD(numbers.dwFileVersionMS)) + L"." +
           std::to_wstring(LOWORD(numbers.dwFileVersionMS)) + L"." +
           std::to_wstring(HIWORD(numbers.dwFileVersionLS));
}

TEST_P(VersionResource, HoldsTheProjectsVersion) {
    EXPECT_EQ(versionIn(numbers()), PROJECT_VERSION);
    EXPECT_EQ(text(L"FileVersion"), PROJECT_VERSION);
    EXPECT_EQ(text(L"ProductVersion"), PROJECT_VERSION);
}

TEST_P(VersionResource, NamesTheProductAndTheFile) {
    EXPECT_EQ(text(L"ProductName"), L"exiv2_wrapper");
    EXPECT_EQ(text(L"OriginalFilename"), GetParam().filename().native());
}

TEST_P(VersionResource, TellsProgramsFromLibraries) {
    const bool isProgram = GetParam().extension() == L".exe";

    EXPECT_EQ(numbers().dwFileType, isProgram ? DWORD{VFT_APP} : DWORD{VFT_DLL});
}

INSTANTIATE_TEST_SUITE_P(Files, VersionResource, ::testing::Values(BINARIES),
                         [](const ::testing::TestParamInfo<path>& file) {
                             return file.param.stem().string();
                         });

}  // namespace
