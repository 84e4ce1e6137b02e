#include "comparison.h"

#include <algorithm>
#include <cstddef>

namespace benchmarks {

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void report(benchmark::State& state, const Row& row, const std::vector<double>& ours,
            const std::vector<double>& reference, const std::string& remark) {
    state.counters["ours"] = median(ours);
    if (!reference.empty()) {
        state.counters["reference"] = median(reference);
        state.counters["ratio"] = median(ours) / median(reference);
    }
    if (row.atMost > 0) {
        state.counters["at_most"] = row.atMost;
    }
    if (row.timesFaster > 0) {
        state.counters["times_faster"] = row.timesFaster;
    }
    if (row.limit > 0) {
        state.counters["limit"] = row.limit;
    }
    state.SetLabel(row.unit + "|" + row.reference + "|" + remark);
}

}  // namespace benchmarks
