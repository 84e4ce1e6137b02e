#pragma once

#include <filesystem>
#include <set>

namespace test_support {

/// Whether a process is there and hasn't ended.
bool isProcessAlive(unsigned long processId);

/// Whether a process ends within the two seconds that a tool may outlive its host. They are counted
/// in looks, a millisecond and more apart, so that a machine that is busy or stands still for a
/// while gives more time.
bool endsInTime(unsigned long processId);

/// Ends a process as if it had crashed.
void killProcess(unsigned long processId);

/// The living processes that the real exiftool in `folder` consists of. On Windows, of every
/// exiftool on the machine: it starts a Perl of its own, whose path tells nothing.
std::set<unsigned long> exiftoolProcesses(const std::filesystem::path& folder);

}  // namespace test_support
