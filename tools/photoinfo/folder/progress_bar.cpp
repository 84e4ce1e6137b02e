#include "photoinfo/folder/progress_bar.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "photoinfo/platform.h"

namespace photoinfo {

namespace {

constexpr std::size_t kMostBarColumns = 40;
constexpr std::size_t kLeastBarColumns = 10;

std::string twoDigits(std::uint64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

// "8 s", "2:05", "1:02:05".
std::string showDuration(double seconds) {
    constexpr double kLongest = 360'000;  // a hundred hours; nobody waits for more
    const auto whole = static_cast<std::uint64_t>(std::min(std::ceil(seconds), kLongest));
    if (whole < 60) {
        return std::to_string(whole) + " s";
    }
    const std::string rest = ":" + twoDigits(whole % 60);
    if (whole < 3600) {
        return std::to_string(whole / 60) + rest;
    }
    return std::to_string(whole / 3600) + ":" + twoDigits(whole / 60 % 60) + rest;
}

// With a decimal below ten a second.
std::string showRate(double rate) {
    constexpr double kHighest = 1e9;
    const auto tenths = static_cast<std::uint64_t>(std::lround(std::min(rate, kHighest) * 10));
    return tenths < 100 ? std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + "/s"
                        : std::to_string((tenths + 5) / 10) + "/s";
}

std::string showBar(double part, std::size_t columns) {
    const auto filled = static_cast<std::size_t>(part * static_cast<double>(columns));
    std::string bar(filled, '=');
    if (filled < columns) {
        bar += '>';
    }
    bar.resize(columns, ' ');
    return "[" + bar + "] ";
}

}  // namespace

std::string progressLine(std::size_t done, std::size_t total, std::chrono::duration<double> elapsed,
                         std::size_t columns) {
    const std::size_t room = columns > 0 ? columns - 1 : 0;
    std::string line = std::to_string(done) + "/" + std::to_string(total);
    if (done > 0 && elapsed.count() > 0.0) {
        const double rate = static_cast<double>(done) / elapsed.count();
        const double left = static_cast<double>(total - std::min(done, total)) / rate;
        const std::string more = "  " + showRate(rate) + "  " + showDuration(left) + " left";
        line += line.size() + more.size() <= room ? more : "";
    }
    constexpr std::size_t kFrameColumns = 3;
    if (total > 0 && line.size() + kFrameColumns + kLeastBarColumns <= room) {
        const double part = static_cast<double>(std::min(done, total)) / static_cast<double>(total);
        const std::size_t barColumns =
            std::min(room - line.size() - kFrameColumns, kMostBarColumns);
        line.insert(0, showBar(part, barColumns));
    }
    line.resize(std::min(line.size(), room));
    return line;
}

ProgressBar::ProgressBar(std::size_t total)
    : total_(total), begin_(std::chrono::steady_clock::now()) {
    show(0);
}

ProgressBar::~ProgressBar() {
    if (columns_ > 0) {
        platform::writeError("\r" + std::string(columns_, ' ') + "\r");
    }
}

void ProgressBar::show(std::size_t done) {
    const std::size_t columns = platform::errorTerminalColumns();
    if (columns == 0) {
        return;
    }
    std::string line =
        progressLine(done, total_, std::chrono::steady_clock::now() - begin_, columns);
    const std::size_t length = line.size();
    line.resize(std::max(length, std::min(columns_, columns - 1)), ' ');
    platform::writeError("\r" + line);
    columns_ = length;
}

}  // namespace photoinfo
