#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exiv2_wrapper/api/preview_failures.h"
#include "exiv2_wrapper/api/preview_header.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/text/native_text.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp {

namespace {

using internal::NativeString;
using internal::PreviewHeader;
using internal::PreviewOutput;

constexpr auto kSignature =
    "bool __cdecl exiv2_wp::readExiv2Thumbnail(const class std::filesystem::path &,const class "
    "std::basic_string<char,struct std::char_traits<char>,class std::allocator<char> > "
    "&,int,int,struct exiv2_wp::TopBottomOffset &,const class std::function<void "
    "__cdecl(int,int,int)> &,const class std::function<void __cdecl(int)> &,const class "
    "std::function<bool __cdecl(const unsigned char *,unsigned __int64,const struct "
    "exiv2_wp::TopBottomOffset &)> &,const class std::function<bool __cdecl(const unsigned char "
    "*,unsigned __int64,int,int,const struct exiv2_wp::TopBottomOffset &,int)> &)";

// What the tool is told about the kind of file. The extension goes to it as the file system has it,
// so that no file name whatever makes the request fail.
NativeString formatArgument(const std::filesystem::path& file, const std::string& format) {
    if (!format.empty()) {
        return internal::nativeText(format);
    }
    const NativeString extension = file.extension().native();
    return extension.empty() ? extension : extension.substr(1);
}

// A DNG file often has no preview, which isn't worth a line.
bool isDng(const NativeString& format) {
    constexpr std::string_view kDng = "dng";
    return std::equal(format.begin(), format.end(), kDng.begin(), kDng.end(),
                      [](auto unit, char letter) {
                          return unit == static_cast<decltype(unit)>(letter) ||
                                 unit == static_cast<decltype(unit)>(letter - 'a' + 'A');
                      });
}

// The tool asks for a width and a height and gets one size for both: a preview of either shape is
// then large enough.
bool runPreviewCommand(const std::filesystem::path& file, const NativeString& format, int size,
                       internal::ToolOutput& output) {
    const NativeString sizeArgument = internal::asciiArgument(std::to_string(size));
    std::vector<NativeString> arguments = {internal::asciiArgument("-ep"), file.native(),
                                           sizeArgument, sizeArgument};
    if (!format.empty()) {
        arguments.push_back(format);
    }
    return internal::runExiv2Cli(arguments, output);
}

// What is wrong with an output whose header could be read; null when it can be used.
const char* findFault(const PreviewOutput& preview) {
    const PreviewHeader& header = preview.header;
    if (header.previewWidth <= 0 || header.previewHeight <= 0) {
        return "Exiv2 incorrect preview size extracted for ";
    }
    if (header.payloadMode != 0 && header.payloadMode != 1) {
        return "Exiv2 incorrect format extracted for ";
    }
    if (!preview.payload) {
        return "Exiv2 failed to handle output size for ";
    }
    return preview.payload->empty() ? "Exiv2 incorrect blob size for " : nullptr;
}

// The rows between both offsets, in 32 bits that wrap around; never negative.
int rowsBetween(int height, const TopBottomOffset& offset) {
    const auto low = [](std::int64_t value) {
        return static_cast<std::uint32_t>(internal::low32Bits(value));
    };
    const std::uint32_t rows = low(height) - low(offset.bottom) - low(offset.top);
    return std::max(static_cast<std::int32_t>(rows), 0);
}

}  // namespace

bool readExiv2Thumbnail(const std::filesystem::path& file, const std::string& format, int firstSize,
                        int secondSize, TopBottomOffset& offset,
                        const std::function<void(int, int, int)>& onSize,
                        const std::function<void(int)>& onNotify,
                        const std::function<bool(const unsigned char*, std::uint64_t,
                                                 const TopBottomOffset&)>& onPlainPayload,
                        const std::function<bool(const unsigned char*, std::uint64_t, int, int,
                                                 const TopBottomOffset&, int)>& onSizedPayload) {
    const std::string key = internal::makePreviewKey(file, firstSize, secondSize);
    if (internal::previewFailures().contains(key)) {
        return false;
    }
    const auto fail = [&](const char* message) {
        if (message != nullptr) {
            internal::logFailure(kSignature, message, file);
        }
        internal::previewFailures().remember(key);
        return false;
    };

    const int size = std::max({firstSize, secondSize, 1});
    const NativeString toolFormat = formatArgument(file, format);
    internal::ToolOutput output;
    if (!runPreviewCommand(file, toolFormat, size, output)) {
        return fail("Exiv2 failed run -ep cli command for ");
    }
    const std::optional<PreviewOutput> preview = internal::splitPreviewOutput(output.text());
    if (!preview) {
        return fail(isDng(toolFormat) ? nullptr : "Exiv2 failed to extract param for ");
    }
    const PreviewHeader& header = preview->header;
    offset = {header.top, header.bottom};
    if (const char* const fault = findFault(*preview)) {
        return fail(fault);
    }

    onSize(header.previewWidth, header.previewHeight, size);
    if (header.notifyValue > 0) {
        onNotify(header.notifyValue);
    }
    const auto* const bytes = reinterpret_cast<const unsigned char*>(preview->payload->data());
    const std::uint64_t count = preview->payload->size();
    return header.payloadMode == 0
               ? onPlainPayload(bytes, count, offset)
               : onSizedPayload(bytes, count, header.previewWidth,
                                rowsBetween(header.previewHeight, offset), offset, size);
}

}  // namespace exiv2_wp
