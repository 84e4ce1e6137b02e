#include <cstddef>
#include <string>
#include <vector>

#include "bare_tool.h"
#include "comparison.h"
#include "exiv2_wrapper/model/print_all_parser.h"
#include "exiv2_wrapper/model/summary_parser.h"
#include "model/literal_parsers.h"
#include "tool_folder.h"

// How fast what exiv2 prints about photos is parsed, against straightforward parsers with a string
// stream a line: the slow twins that the parsers' tests compare them with.

namespace {

using namespace benchmarks;
using exiv2_wp::internal::CliExifMetadata;
using exiv2_wp::internal::parsePrintAllOutput;
using test_support::literalParsePrintAllOutput;
using Texts = std::vector<std::string>;

// What the tool prints of each photo when it is called like this.
Texts printedBy(std::vector<std::string> call) {
    Texts texts;
    call.insert(call.begin(), EXIV2);
    call.emplace_back();
    for (const auto& photo : photos()) {
        call.back() = photo;
        texts.push_back(runBare(call));
    }
    return texts;
}

std::string sizeOf(const Texts& texts) {
    std::size_t bytes = 0;
    for (const std::string& text : texts) {
        bytes += text.size();
    }
    return std::to_string(texts.size()) + " outputs, " + std::to_string(bytes / 1000) + " kB";
}

// Parsing alone: the records are made before and let go after the clock is looked at.
template <typename Parser>
double nanosecondsToParse(const Texts& texts, int times, const Parser& parse) {
    std::vector<CliExifMetadata> records(texts.size() * static_cast<std::size_t>(times));
    auto record = records.begin();
    return nanosecondsOf(times, [&] {
        for (const std::string& text : texts) {
            benchmark::DoNotOptimize(parse(text, *record++));
        }
    });
}

// Numbers are read by the first question for them, so both sides are asked for all.
template <typename Parser>
auto andAllNumbers(const Parser& parse) {
    return [&parse](const std::string& text, CliExifMetadata& record) {
        const bool isParsed = parse(text, record);
        for (const auto& [key, tag] : record.tags) {
            benchmark::DoNotOptimize(tag.integers.size() + tag.rationals.size());
        }
        return isParsed;
    };
}

void printAllParser(benchmark::State& state) {
    const Texts texts = printedBy({"-PXEkycv", "-q"});
    compareMeasures(
        state, {.reference = "a string stream a line", .timesFaster = 6, .remark = sizeOf(texts)},
        [&] { return nanosecondsToParse(texts, 1, andAllNumbers(parsePrintAllOutput)); },
        [&] { return nanosecondsToParse(texts, 1, andAllNumbers(literalParsePrintAllOutput)); });
}

void summaryParser(benchmark::State& state) {
    const Texts texts = printedBy({"pr"});
    compareMeasures(
        state, {.reference = "a string stream", .timesFaster = 5, .remark = sizeOf(texts)},
        [&] { return nanosecondsToParse(texts, 10, exiv2_wp::internal::parseSummaryOutput); },
        [&] { return nanosecondsToParse(texts, 10, test_support::literalParseSummaryOutput); });
}

BENCHMARK_ROW(printAllParser, "print-out parser", 100);
BENCHMARK_ROW(summaryParser, "summary parser", 300);

}  // namespace

BENCHMARK_MAIN();
