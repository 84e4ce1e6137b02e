#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace photoinfo {

/// Writes one record of comma-separated values by RFC 4180: a cell with a comma, a quote or a line
/// end is put into quotes, its own quotes doubled; the record ends in CR LF. Bytes stay what they
/// are.
void writeCsvRecord(std::ostream& stream, const std::vector<std::string>& cells);

}  // namespace photoinfo
