#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "support/tool_directory.h"

namespace test_support {

/// The stand-in exiftool.exe of this program, running; as in a host there is one.
ToolDirectory& runningTool();

/// Notes the requests that reach it during its life.
class RequestCapture {
public:
    RequestCapture() : before_(runningTool().requests().size()) {}
    [[nodiscard]] std::vector<std::string> requests() const {
        const std::vector<std::string> all = runningTool().requests();
        return {all.begin() + static_cast<std::ptrdiff_t>(before_), all.end()};
    }

private:
    std::size_t before_;
};

/// A path that no other test asks about. It needs no file: the stand-in opens none.
std::filesystem::path uniqueFile(std::string_view name);

/// The path as a request names it.
std::string inRequest(const std::filesystem::path& file);

}  // namespace test_support
