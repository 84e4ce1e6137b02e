#include "photoinfo/folder/csv.h"

namespace photoinfo {

namespace {

std::string quotedIfNeeded(const std::string& cell) {
    if (cell.find_first_of(",\"\r\n") == std::string::npos) {
        return cell;
    }
    std::string quoted = "\"";
    for (const char c : cell) {
        quoted.append(c == '"' ? 2 : 1, c);
    }
    return quoted + '"';
}

}  // namespace

void writeCsvRecord(std::ostream& stream, const std::vector<std::string>& cells) {
    const char* separator = "";
    for (const std::string& cell : cells) {
        stream << separator << quotedIfNeeded(cell);
        separator = ",";
    }
    stream << "\r\n";
}

}  // namespace photoinfo
