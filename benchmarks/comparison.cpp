#include "comparison.h"

#include <algorithm>
#include <cstddef>

namespace benchmarks {

namespace {

double median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

void report(benchmark::State& state, const Row& row, std::vector<double> ours,
            std::vector<double> reference) {
    state.counters["ours"] = median(ours);
    if (!reference.empty()) {
        state.counters["reference"] = median(reference);
    }
    state.counters["at_most"] = row.atMost;
    state.counters["times_faster"] = row.timesFaster;
    state.counters["limit"] = row.limit;
    state.SetLabel(row.unit + "|" + row.reference + "|" + row.remark);
}

}  // namespace benchmarks
