#include "exiv2_wrapper/api/preview_header.h"

#include <algorithm>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "fuzz/canned_runner.h"
#include "fuzz/checks.h"
#include "fuzz/literal_preview.h"

namespace {

using exiv2_wp::TopBottomOffset;
using exiv2_wp::internal::NativeString;

void checkSplit(const std::string& output) {
    const auto fast = exiv2_wp::internal::splitPreviewOutput(output);
    const fuzz::LiteralPreview literal(output);
    fuzz::require(fast.has_value() == literal.hasHeader, "both versions find a header");
    if (!fast) {
        return;
    }
    const auto& header = fast->header;
    const std::array<std::int32_t, 6> numbers = {header.previewWidth, header.previewHeight,
                                                 header.notifyValue,  header.payloadMode,
                                                 header.top,          header.bottom};
    fuzz::require(numbers == literal.header, "with the same numbers");
    fuzz::require(fast->payload.has_value() == literal.hasPayload, "and a payload or none");
    fuzz::require(fast->payload.value_or("") == literal.payload, "of the same bytes");
}

// Asks for a preview of a file that was never asked about, and writes down what the host hears. The
// path is longer than two sizes, which take the place of its beginning where failures are kept.
fuzz::HostStory tellFast(const std::string& format, int firstSize, int secondSize) {
    static unsigned long number = 0;
    const std::string file =
        "/photos/that/nobody/has/asked/for/" + std::to_string(number++) + ".raw";
    const fuzz::LogTexts log;
    fuzz::HostStory story;
    TopBottomOffset offset = {-7, -7};
    const auto text = [](const unsigned char* bytes, std::uint64_t count) {
        return fuzz::textOf(bytes, count);
    };
    story.result = exiv2_wp::readExiv2Thumbnail(
        file, format, firstSize, secondSize, offset,
        [&](int width, int height, int size) {
            story.tell("size", {width, height, size});
        },
        [&](int value) { story.tell("notify", {value}); },
        [&](const unsigned char* bytes, std::uint64_t count, const TopBottomOffset& rows) {
            story.tell("plain " + text(bytes, count), {rows.top, rows.bottom});
            return true;
        },
        [&](const unsigned char* bytes, std::uint64_t count, int width, int height,
            const TopBottomOffset& rows, int size) {
            story.tell("sized " + text(bytes, count), {width, height, rows.top, rows.bottom, size});
            return true;
        });
    story.top = offset.top;
    story.bottom = offset.bottom;
    for (const std::string& line : log.texts()) {
        story.lines.push_back(line.substr(0, line.size() - file.size()));
    }
    return story;
}

}  // namespace

// The input: both sizes of four bytes each, the format to the line feed, then what the tool prints.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string output = fuzz::textOf(data, size);
    const int firstSize = fuzz::takeNumber(output);
    const int secondSize = fuzz::takeNumber(output);
    std::string format = fuzz::takeLine(output);
    std::replace_if(
        format.begin(), format.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; },
        '?');
    checkSplit(output);

    fuzz::cannedRunner() = {.output = output};
    const fuzz::HostStory fast = tellFast(format, firstSize, secondSize);
    fuzz::require(fast == fuzz::literalStory(output, format, firstSize, secondSize),
                  "both versions tell the host the same");
    const std::string edge = std::to_string(std::max({firstSize, secondSize, 1}));
    const std::string kind = format.empty() ? "raw" : format;
    const std::vector<NativeString>& arguments = fuzz::cannedRunner().arguments;
    fuzz::require(arguments.size() == 5, "the tool gets five arguments");
    for (const auto& [at, expected] : {std::pair(2, edge), {3, edge}, {4, kind}}) {
        fuzz::require(
            arguments[static_cast<std::size_t>(at)] == exiv2_wp::internal::asciiArgument(expected),
            "the sizes and the format among them");
    }
    return 0;
}
