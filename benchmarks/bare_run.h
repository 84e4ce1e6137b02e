#pragma once

#include <string>
#include <vector>

namespace benchmarks {

/// The least that a tool run can cost: spawns `arguments` (the program's path first) with a pipe as
/// standard output, reads that to its end into `output`, and waits. True for exit code 0.
bool runBare(const std::vector<std::string>& arguments, std::string& output);

}  // namespace benchmarks
