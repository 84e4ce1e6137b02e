#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace photoinfo {

/// What a command shows to people: one aligned line a value. All text is made printable.
class Table {
public:
    /// An empty value is shown as "unknown".
    void row(std::string_view label, std::string_view value);

    /// `show` turns a known value into text.
    template <typename Value, typename Show>
    void row(std::string_view label, const std::optional<Value>& value, Show show) {
        row(label, value ? std::string(show(*value)) : std::string());
    }

    /// A line of its own above the rows that follow.
    void heading(std::string_view text);

    void write(std::ostream& stream) const;

private:
    struct Line {
        std::string label;
        std::optional<std::string> value;  // none: a heading
    };

    std::vector<Line> lines_;
};

}  // namespace photoinfo
