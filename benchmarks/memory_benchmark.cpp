#include <malloc.h>

#include <cstddef>
#include <filesystem>
#include <string>

#include "comparison.h"
#include "exiv2_wrapper/model/print_all_parser.h"
#include "tool_folder.h"

// How much memory what the library remembers takes.

namespace {

using namespace benchmarks;

constexpr int kFiles = 200;

// The allocator's book-keeping included.
double bytesInUse() {
    return static_cast<double>(mallinfo2().uordblks);
}

std::size_t countTags(const std::filesystem::path& photo) {
    exiv2_wp::internal::CliExifMetadata record;
    if (!exiv2_wp::internal::parsePrintAllOutput(runBareTwice(photo), record)) {
        giveUp("exiv2 prints no tags");
    }
    return record.tags.size();
}

void bytesATag(benchmark::State& state) {
    const std::size_t tags = countTags(nextPhoto());
    const double before = bytesInUse();
    for (int i = 0; i < kFiles; ++i) {
        readSummary(nextPhoto());
    }
    const double bytes = (bytesInUse() - before) / kFiles / static_cast<double>(tags);
    measure(state,
            {.limit = 300, .unit = "B", .remark = "200 cached records of " + std::to_string(tags)},
            [&] { return bytes; });
}

BENCHMARK_ROW(bytesATag, "memory a tag", 1);

}  // namespace

BENCHMARK_MAIN();
