#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "api/photo_with_tool.h"

namespace exiv2_wp {

/// The signature that the preview reader's failure lines carry.
inline constexpr auto kPreviewSignature =
    "bool __cdecl exiv2_wp::readExiv2Thumbnail(const class std::filesystem::path &,const class "
    "std::basic_string<char,struct std::char_traits<char>,class std::allocator<char> > "
    "&,int,int,struct exiv2_wp::TopBottomOffset &,const class std::function<void "
    "__cdecl(int,int,int)> &,const class std::function<void __cdecl(int)> &,const class "
    "std::function<bool __cdecl(const unsigned char *,unsigned __int64,const struct "
    "exiv2_wp::TopBottomOffset &)> &,const class std::function<bool __cdecl(const unsigned char "
    "*,unsigned __int64,int,int,const struct exiv2_wp::TopBottomOffset &,int)> &)";

/// A photo, a tool and a host that writes down what it is told about a preview.
class PhotoWithPreview : public PhotoWithTool {
protected:
    void toolPrints(const std::string& output) { tool.answer({"-ep"}, {.output = output}); }

    bool read(int firstSize = 640, int secondSize = 480, const std::string& format = "") {
        return readExiv2Thumbnail(
            file, format, firstSize, secondSize, offset,
            [this](int width, int height, int size) {
                note("size", {width, height, size});
            },
            [this](int value) { note("notify", {value}); },
            [this](const unsigned char* bytes, std::uint64_t count, const TopBottomOffset& rows) {
                note("plain " + text(bytes, count), {rows.top, rows.bottom});
                return hostAnswer;
            },
            [this](const unsigned char* bytes, std::uint64_t count, int width, int height,
                   const TopBottomOffset& rows, int size) {
                note("sized " + text(bytes, count), {width, height, rows.top, rows.bottom, size});
                return hostAnswer;
            });
    }

    /// "name number number ...", one a callback.
    std::vector<std::string> told;
    TopBottomOffset offset = {-7, -7};
    bool hostAnswer = true;

private:
    static std::string text(const unsigned char* bytes, std::uint64_t count) {
        return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count)};
    }

    void note(std::string line, const std::vector<std::int64_t>& numbers) {
        for (const std::int64_t number : numbers) {
            line += " " + std::to_string(number);
        }
        told.push_back(line);
    }
};

}  // namespace exiv2_wp
