#include <filesystem>
#include <vector>

#include "exiv2_wrapper/runner/read_call.h"
#include "fuzz/canned_runner.h"
#include "fuzz/checks.h"
#include "runner/literal_parts.h"

// The input is a number of files, the size of the pieces in which the output arrives, and what the
// tool prints about those files.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    constexpr std::size_t kMostFiles = 8;
    const std::vector<std::filesystem::path> files(1 + data[0] % kMostFiles, "/photo.jpg");
    std::vector<const std::filesystem::path*> list;
    for (const std::filesystem::path& file : files) {
        list.push_back(&file);
    }
    fuzz::cannedRunner() = {.output = fuzz::textOf(data + 2, size - 2),
                            .pieceSize = std::size_t{1} + data[1]};
    std::vector<test_support::LiteralPart> parts;
    exiv2_wp::internal::forgetReadCall();
    const auto result =
        exiv2_wp::internal::runReadCall(list, [&](const exiv2_wp::internal::FilePart& part) {
            parts.push_back({part.printAll.isSuccess, std::string(part.printAll.text),
                             part.summary.isSuccess, std::string(part.summary.text)});
        });
    const test_support::LiteralParts literal =
        test_support::literalTakeParts(fuzz::cannedRunner().output, files.size());
    fuzz::require(result.asked == files.size(), "the tool is asked about all files");
    fuzz::require(result.answered == parts.size(), "each part is handed out once");
    fuzz::require(parts == literal.parts, "both versions read the same parts");
    fuzz::require(!exiv2_wp::internal::isReadCallRefused() || parts.empty(),
                  "a tool that has answered knows the call");
    return 0;
}
