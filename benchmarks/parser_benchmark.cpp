#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include "comparison.h"
#include "exiv2_wrapper/model/print_all_parser.h"
#include "exiv2_wrapper/model/summary_parser.h"
#include "model/literal_parsers.h"
#include "print_outs.h"

// How fast a tool's output is parsed, against straightforward parsers with a string stream a line:
// the slow twins that the parsers' tests compare them with.

namespace {

using namespace benchmarks;
using exiv2_wp::internal::CliExifMetadata;

constexpr auto kSummary =
    "File name       : photo.jpg\nFile size       : 36731 Bytes\nMIME type       : image/jpeg\n"
    "Image size      : 100 x 66\nThumbnail       : image/jpeg, 5448 Bytes\nCamera make     : "
    "Canon\n"
    "Camera model    : Canon EOS 5D Mark III\nImage timestamp : 2021:07:04 18:30:05\n"
    "File number     : \nExposure time   : 1/125 s\nAperture        : F2.8\nExposure bias   : 0 "
    "EV\n"
    "Flash           : No, compulsory\nFlash bias      : 0 EV\nFocal length    : 50.0 mm\n"
    "Subject distance: 0\nISO speed       : 100\nExposure mode   : Manual\n"
    "Metering mode   : Multi-segment\nMacro mode      : Off\nImage quality   : RAW\n"
    "White balance   : Auto\nCopyright       : \nExif comment    : \n"
    "Lens name       : EF24-70mm f/2.8L USM\n";

// Parsing alone: the records are made before and let go after the clock is looked at.
template <typename Parser>
double nanosecondsToParse(const std::vector<std::string>& texts, int times, const Parser& parse) {
    std::vector<CliExifMetadata> records(texts.size() * static_cast<std::size_t>(times));
    auto record = records.begin();
    return nanosecondsOf(times, [&] {
        for (const std::string& text : texts) {
            benchmark::DoNotOptimize(parse(text, *record++));
        }
    });
}

template <typename Parser, typename Literal>
void compareParsers(benchmark::State& state, const Row& row, const std::vector<std::string>& texts,
                    int times, const Parser& parse, const Literal& parseLiterally) {
    std::size_t bytes = 0;
    for (const std::string& text : texts) {
        bytes += text.size();
    }
    std::vector<double> speeds;
    const auto ours = [&] {
        const double nanoseconds = nanosecondsToParse(texts, times, parse);
        speeds.push_back(static_cast<double>(bytes) / nanoseconds * 1e3);
        return nanoseconds;
    };
    compareTimes(state, row, ours,
                 [&] { return nanosecondsToParse(texts, times, parseLiterally); });
    char remark[100];
    std::snprintf(remark, sizeof remark, "%zu outputs, %zu kB, %.0f MB/s", texts.size(),
                  bytes / 1000, median(speeds));
    state.SetLabel(row.unit + "|" + row.reference + "|" + remark);
}

void printAllParser(benchmark::State& state) {
    compareParsers(state, {.reference = "a string stream a line", .timesFaster = 6},
                   recordedPrintOuts(".print_all", makePrintOut(180)), 1,
                   exiv2_wp::internal::parsePrintAllOutput,
                   test_support::literalParsePrintAllOutput);
}

void summaryParser(benchmark::State& state) {
    compareParsers(state, {.reference = "a string stream", .timesFaster = 5},
                   recordedPrintOuts(".summary", kSummary), 10,
                   exiv2_wp::internal::parseSummaryOutput, test_support::literalParseSummaryOutput);
}

BENCHMARK_ROW(printAllParser, "print-out parser", 100);
BENCHMARK_ROW(summaryParser, "summary parser", 300);

}  // namespace

BENCHMARK_MAIN();
