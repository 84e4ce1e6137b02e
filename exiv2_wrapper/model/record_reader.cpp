#include "exiv2_wrapper/model/record_reader.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <string_view>

#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/model/print_all_parser.h"
#include "exiv2_wrapper/model/summary_parser.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/text/path_text.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

namespace {

constexpr auto kSignature =
    "class std::shared_ptr<struct exiv2_wp::`anonymous namespace'::CliExifMetadata const > __cdecl "
    "exiv2_wp::`anonymous-namespace'::readExifMetadataFromCliCached(const class "
    "std::filesystem::path &)";

// Ordinary image formats, of which nobody expects a summary: a failed run is not worth a line.
constexpr std::array<std::string_view, 28> kOrdinaryExtensions = {
    "jpg",  "jpeg", "jpe",  "jfif", "png", "bmp", "dib", "gif", "webp", "heic",
    "heif", "hif",  "avif", "jxl",  "jp2", "j2k", "jpf", "jpx", "psd",  "psb",
    "tga",  "exr",  "hdr",  "ppm",  "pgm", "pbm", "pnm", "ico",
};

bool isOrdinaryImage(const std::filesystem::path& file) {
    const std::string extension = lowerCased(utf8Path(file.extension()));
    return !extension.empty() &&
           std::find(kOrdinaryExtensions.begin(), kOrdinaryExtensions.end(),
                     std::string_view(extension).substr(1)) != kOrdinaryExtensions.end();
}

// The summary is a gift: without it the record is used all the same.
void addSummary(const std::filesystem::path& file, const RunAnswer& summary,
                CliExifMetadata& record) {
    if (!summary.isSuccess) {
        if (!isOrdinaryImage(file)) {
            logFailure(kSignature, "Exiv2 failed run pr cli command for ", file);
        }
        return;
    }
    if (!parseSummaryOutput(summary.text, record)) {
        logFailure(kSignature, "Exiv2 failed to parse additional metadata output for ", file);
    }
}

// The one way from what a tool printed to a record and to log lines. The summary is asked for once
// it is wanted.
Record makeRecordOf(const std::filesystem::path& file, const std::string& key,
                    const RunAnswer& printAll, const std::function<RunAnswer()>& summary) {
    if (!printAll.isSuccess) {
        logFailure(kSignature, "Exiv2 failed run -PXEkycv cli command for ", file);
        return nullptr;
    }
    const auto record = std::make_shared<CliExifMetadata>();
    record->fileKey = key;
    if (!parsePrintAllOutput(printAll.text, *record)) {
        logFailure(kSignature, "Exiv2 failed to parse PrintAll output for ", file);
        return nullptr;
    }
    addSummary(file, summary(), *record);
    return record;
}

RunAnswer runFor(const std::vector<NativeString>& arguments, ToolOutput& output) {
    const bool isSuccess = runExiv2Cli(arguments, output);
    return {isSuccess, output.text()};
}

}  // namespace

Record readRecord(const std::filesystem::path& file, const std::string& key) {
    ToolOutput entries;
    ToolOutput summary;
    const RunAnswer printAll =
        runFor({asciiArgument("-PXEkycv"), asciiArgument("-q"), file.native()}, entries);
    return makeRecordOf(file, key, printAll, [&] {
        return runFor({asciiArgument("pr"), file.native()}, summary);
    });
}

Record makeRecord(const std::filesystem::path& file, const std::string& key, const FilePart& part) {
    return makeRecordOf(file, key, part.printAll, [&] { return part.summary; });
}

}  // namespace exiv2_wp::internal
