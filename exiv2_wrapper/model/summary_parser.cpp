#include "exiv2_wrapper/model/summary_parser.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

namespace {

constexpr std::string_view kLensNameLabel = "Lens name";
constexpr std::string_view kFocalLengthLabel = "Focal length";
constexpr std::string_view kSubjectDistanceLabel = "Subject distance";

// Most lines differ from a label in their first letter already.
bool beginsWith(std::string_view line, std::string_view label) {
    return !line.empty() && line.front() == label.front() && line.starts_with(label);
}

// The lines worth a look, in order: the first of each label that is read. A carriage return before
// a line feed is kept, and so ends a value that came with one.
std::vector<std::string_view> labelledLines(std::string_view output) {
    constexpr std::array kLabels = {kLensNameLabel, kFocalLengthLabel, kSubjectDistanceLabel};
    std::array<bool, kLabels.size()> isFound{};
    std::vector<std::string_view> lines;
    lines.reserve(kLabels.size());
    while (!output.empty()) {
        const std::size_t lineFeed = output.find('\n');
        const std::string_view line = output.substr(0, lineFeed);
        for (std::size_t i = 0; i < kLabels.size(); ++i) {
            if (!isFound[i] && beginsWith(line, kLabels[i])) {
                isFound[i] = true;
                lines.push_back(line);
            }
        }
        output.remove_prefix(lineFeed == std::string_view::npos ? output.size() : lineFeed + 1);
    }
    return lines;
}

// The text is read as a step on a logarithmic scale, not as metres: 0 is 0.01, every 0.4 more is
// ten times as far, and 10000 is the end of the scale.
float distanceOfStep(float step) {
    constexpr double kStepsPerDecade = 0.4;
    constexpr double kDistanceAtZero = 0.01;
    constexpr double kFarthest = 10000.0;
    const double distance =
        std::pow(10.0, static_cast<double>(step) / kStepsPerDecade) * kDistanceAtZero;
    return static_cast<float>(distance > kFarthest ? kFarthest : distance);
}

}  // namespace

bool parseSummaryOutput(std::string_view output, CliExifMetadata& record) {
    const std::vector<std::string_view> lines = labelledLines(output);

    std::string lensName = findSummaryValue(lines, kLensNameLabel);
    if (!lensName.empty()) {
        record.lensName = std::move(lensName);
    }
    if (const auto length = parseFloat(findSummaryValue(lines, kFocalLengthLabel))) {
        record.focalLength = *length;
    }
    if (const auto step = parseFloat(findSummaryValue(lines, kSubjectDistanceLabel))) {
        record.subjectDistance = distanceOfStep(*step);
    }
    return true;
}

std::string findSummaryValue(const std::vector<std::string_view>& lines, std::string_view label) {
    const auto line = std::find_if(lines.begin(), lines.end(), [label](std::string_view candidate) {
        return candidate.starts_with(label);
    });
    if (line == lines.end()) {
        return {};
    }
    const std::size_t colon = line->find(':');
    if (colon == std::string_view::npos) {
        return {};
    }
    return std::string(line->substr(colon + 2));
}

}  // namespace exiv2_wp::internal
