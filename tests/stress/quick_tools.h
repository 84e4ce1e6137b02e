#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/tool_directory.h"
#include "vesk_logger/log_sink.h"

namespace test_support {

/// A folder that holds the quick tool as exiv2.exe and as exiftool.exe, and nothing of the log.
class QuickTools {
public:
    QuickTools() {
        for (const char* const name : {"exiv2.exe", "exiftool.exe"}) {
            std::filesystem::copy_file(QUICK_TOOL, folder_.path() / name);
        }
        vesk::setLogSink([](const std::vector<vesk::LogItem>&) {});
    }
    QuickTools(const QuickTools&) = delete;
    QuickTools& operator=(const QuickTools&) = delete;
    ~QuickTools() { vesk::setLogSink({}); }

    [[nodiscard]] const std::filesystem::path& path() const { return folder_.path(); }

private:
    TemporaryDirectory folder_;
};

/// How many calls a stress makes: what the environment variable EXIV2_WRAPPER_STRESS_CALLS says.
inline int stressCalls() {
    const char* const calls = std::getenv("EXIV2_WRAPPER_STRESS_CALLS");
    return calls == nullptr ? 10'000 : std::stoi(calls);
}

}  // namespace test_support
