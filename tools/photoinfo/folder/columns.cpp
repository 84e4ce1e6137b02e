#include "photoinfo/folder/columns.h"

#include <algorithm>
#include <cstddef>

#include "photoinfo/show/text.h"

namespace photoinfo {

namespace {

constexpr std::size_t kGap = 2;

}  // namespace

Columns::Columns(const std::vector<std::string>& headings) {
    rows_.push_back(headings);
}

void Columns::row(const std::vector<std::string>& cells) {
    std::vector<std::string>& shown = rows_.emplace_back();
    for (const std::string& cell : cells) {
        shown.push_back(cell.empty() ? kUnknown : printable(cell));
    }
}

void Columns::write(std::ostream& stream) const {
    if (rows_.size() == 1) {
        return;
    }
    std::vector<std::size_t> widths(rows_.front().size());
    for (const auto& cells : rows_) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            widths[i] = std::max(widths[i], lengthOf(cells[i]));
        }
    }
    for (const auto& cells : rows_) {
        std::string line;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            line += cells[i] + std::string(widths[i] + kGap - lengthOf(cells[i]), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        stream << line << '\n';
    }
}

}  // namespace photoinfo
