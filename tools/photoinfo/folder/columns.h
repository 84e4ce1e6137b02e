#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace photoinfo {

/// A table for people with one line a record, its columns as wide as they must be. All text is made
/// printable; an empty cell is shown as "unknown".
class Columns {
public:
    /// Every row has as many cells as there are headings.
    explicit Columns(const std::vector<std::string>& headings);

    void row(const std::vector<std::string>& cells);

    /// Nothing at all when there are no rows.
    void write(std::ostream& stream) const;

private:
    std::vector<std::vector<std::string>> rows_;  // the headings first
};

}  // namespace photoinfo
