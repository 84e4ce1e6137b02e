#include "photoinfo/show/table.h"

#include <algorithm>
#include <cstddef>

#include "photoinfo/show/text.h"

namespace photoinfo {

namespace {

constexpr auto kIndent = "  ";

// Wide enough for the labels of most commands, so that their tables look alike.
constexpr std::size_t kLeastLabelWidth = 20;

}  // namespace

void Table::row(std::string_view label, std::string_view value) {
    lines_.push_back({printable(label), value.empty() ? kUnknown : printable(value)});
}

void Table::heading(std::string_view text) {
    lines_.push_back({printable(text), std::nullopt});
}

void Table::write(std::ostream& stream) const {
    std::size_t width = kLeastLabelWidth;
    for (const Line& line : lines_) {
        width = std::max(width, line.value ? lengthOf(line.label) + 1 : 0);
    }
    for (const Line& line : lines_) {
        stream << kIndent << line.label;
        if (line.value) {
            stream << std::string(width - lengthOf(line.label), ' ') << *line.value;
        }
        stream << '\n';
    }
}

}  // namespace photoinfo
