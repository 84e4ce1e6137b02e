#include "photoinfo/folder/progress_bar.h"

#include <gtest/gtest.h>

namespace photoinfo {
namespace {

struct LineCase {
    const char* name;
    std::size_t done;
    std::size_t total;
    double seconds;
    std::size_t columns;
    const char* line;
};

void PrintTo(const LineCase& c, std::ostream* stream) {
    *stream << c.name;
}

class ProgressLine : public ::testing::TestWithParam<LineCase> {};

TEST_P(ProgressLine, IsAsExpected) {
    const LineCase& c = GetParam();

    EXPECT_EQ(progressLine(c.done, c.total, std::chrono::duration<double>(c.seconds), c.columns),
              c.line);
}

constexpr LineCase kLineCases[] = {
    {"BeginsWithoutARate", 0, 40, 0.5, 80, "[>                                       ] 0/40"},
    {"TellsRateAndTimeLeft", 10, 40, 5.0, 80,
     "[==========>                             ] 10/40  2.0/s  15 s left"},
    {"ShowsWholeRatesFromTenOn", 100, 400, 2.5, 80,
     "[==========>                             ] 100/400  40/s  8 s left"},
    {"ShowsMinutes", 1, 126, 1.0, 80,
     "[>                                       ] 1/126  1.0/s  2:05 left"},
    {"ShowsHours", 1, 3726, 1.0, 80,
     "[>                                       ] 1/3726  1.0/s  1:02:05 left"},
    {"EndsFull", 40, 40, 20.0, 80,
     "[========================================] 40/40  2.0/s  0 s left"},
    {"ShortensTheBar", 10, 40, 5.0, 40, "[===>         ] 10/40  2.0/s  15 s left"},
    {"LeavesTheBarOut", 10, 40, 5.0, 30, "10/40  2.0/s  15 s left"},
    {"LeavesTheRateOut", 10, 40, 5.0, 12, "10/40"},
    {"IsCutAtLast", 10, 40, 5.0, 4, "10/"},
    {"FitsIntoOneColumn", 10, 40, 5.0, 1, ""},
    {"KnowsNoPhotos", 0, 0, 0.0, 80, "0/0"},
};

INSTANTIATE_TEST_SUITE_P(Cases, ProgressLine, ::testing::ValuesIn(kLineCases),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace photoinfo
