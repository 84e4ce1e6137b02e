#pragma once

#include <stdexcept>
#include <string>

namespace photoinfo {

/// How the program ends. Scripts rely on the numbers; the help text lists them.
enum class ExitCode : int {
    success = 0,        ///< also when a file holds no metadata
    failure = 1,        ///< something unforeseen: output that can't be written, exhausted memory
    usage = 2,          ///< the command line isn't understood
    exiv2 = 3,          ///< no exiv2.exe that works
    file = 4,           ///< a file can't be read, written or served; the others have been answered
    exiftool = 5,       ///< no exiftool.exe that works
    previewCall = 6,    ///< exiv2.exe works, but doesn't know the call that extracts previews
    interrupted = 130,  ///< the user stopped it (Ctrl-C), which shells tell by 130 as well
};

/// Ends a command early, or only the work on one file when the code is `file`. The message is for
/// the user: no full stop, no program name.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
    [[nodiscard]] ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

}  // namespace photoinfo
