#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

/// What the Explorer shows of the library's file and installers compare.
namespace {

class VersionResource : public ::testing::Test {
protected:
    void SetUp() override {
        DWORD ignored = 0;
        data_.resize(GetFileVersionInfoSizeW(LIBRARY, &ignored));
        ASSERT_FALSE(data_.empty());
        ASSERT_TRUE(
            GetFileVersionInfoW(LIBRARY, 0, static_cast<DWORD>(data_.size()), data_.data()));
    }

    std::wstring text(const std::wstring& name) {
        void* value = nullptr;
        UINT length = 0;
        const std::wstring key = L"\\StringFileInfo\\040904b0\\" + name;
        const BOOL isFound = VerQueryValueW(data_.data(), key.c_str(), &value, &length);
        return isFound != 0 ? static_cast<const wchar_t*>(value) : L"not found";
    }

    std::wstring number() {
        void* value = nullptr;
        UINT length = 0;
        if (VerQueryValueW(data_.data(), L"\\", &value, &length) == 0) {
            return L"not found";
        }
        const auto* const info = static_cast<const VS_FIXEDFILEINFO*>(value);
        return std::to_wstring(HIWORD(info->dwFileVersionMS)) + L"." +
               std::to_wstring(LOWORD(info->dwFileVersionMS)) + L"." +
               std::to_wstring(HIWORD(info->dwFileVersionLS));
    }

private:
    std::vector<char> data_;
};

TEST_F(VersionResource, HoldsTheProjectsVersion) {
    EXPECT_EQ(number(), PROJECT_VERSION);
    EXPECT_EQ(text(L"FileVersion"), PROJECT_VERSION);
    EXPECT_EQ(text(L"ProductVersion"), PROJECT_VERSION);
}

TEST_F(VersionResource, NamesTheProductAndTheFile) {
    EXPECT_EQ(text(L"ProductName"), L"exiv2_wrapper");
    EXPECT_EQ(text(L"OriginalFilename"), LIBRARY_NAME);
}

}  // namespace
