#pragma once

#include <filesystem>
#include <string>

/// Files by which a test and the programs that it starts tell each other something. A program makes
/// such a file under another name and renames it, so that nobody sees a part of it. On Windows, for
/// the moment in which a file gets its name nobody can open it, and one that is open can't be
/// replaced: both are waited for here.
namespace test_support {

/// A file's bytes. Raises when it can't be opened for two minutes.
[[nodiscard]] std::string readSharedFile(const std::filesystem::path& file);

/// Gives a file its name, in place of another that may be there. Raises when that isn't possible
/// for two minutes.
void renameSharedFile(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace test_support
