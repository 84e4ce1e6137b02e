#pragma once

#include <filesystem>
#include <set>

namespace test_support {

/// Whether a process is there and hasn't ended.
bool isProcessAlive(unsigned long processId);

/// Waits for the end of a process, two minutes at most.
bool ends(unsigned long processId);

/// Waits for the end of a process as long as a tool may outlive a host that was killed: two
/// seconds. They are counted in looks, a millisecond and more apart, so that a machine that is busy
/// or stands still for a while gives more time.
bool endsInTime(unsigned long processId);

/// Ends a process as if it had crashed.
void killProcess(unsigned long processId);

/// The living processes that the real exiftool in `folder` consists of. On Windows, of every
/// exiftool that this program's hosts have started: it starts a Perl of its own, whose path tells
/// nothing.
std::set<unsigned long> exiftoolProcesses(const std::filesystem::path& folder);

}  // namespace test_support
