#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "photoinfo/exit_code.h"
#include "photoinfo/show/json.h"
#include "photoinfo/show/table.h"

namespace photoinfo {

/// How a check of the doctor came out.
enum class CheckState {
    ok,
    missing,   ///< a file or an ability isn't there
    failed,    ///< it is there and doesn't work
    warns,     ///< it works, but says something that nobody asked for
    notTried,  ///< needs something that isn't there or doesn't work
};

/// What a tool directory proved to be good for, check by check.
class DoctorReport {
public:
    /// Adds a check. `whenNotOk` is what the program ends with if it came out other than ok and no
    /// check came out worse; the preview call is the least, and of two alike the first counts.
    void add(std::string_view check, ExitCode whenNotOk, CheckState state,
             std::string_view detail = {});

    [[nodiscard]] Table table() const;
    [[nodiscard]] Json json() const;
    [[nodiscard]] ExitCode exitCode() const { return exitCode_; }

private:
    struct Check {
        std::string name;
        CheckState state;
        std::string detail;
    };

    std::vector<Check> checks_;
    ExitCode exitCode_ = ExitCode::success;
};

}  // namespace photoinfo
