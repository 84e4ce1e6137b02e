#include "support/stand_in_tool.h"

#include <cstddef>

#include "support/stand_in_scenario.h"

namespace stand_in {

namespace {

namespace fs = std::filesystem;

constexpr int kNoRuleExitCode = 99;

// Each argument: the number of its code units in decimal, a colon, the units as they are.
std::string encodeArguments(const std::vector<NativeString>& arguments) {
    std::string bytes;
    for (const NativeString& argument : arguments) {
        bytes += std::to_string(argument.size()) + ":";
        bytes.append(reinterpret_cast<const char*>(argument.data()),
                     argument.size() * sizeof(NativeString::value_type));
    }
    return bytes;
}

bool isFor(const Json& rule, const std::vector<NativeString>& arguments) {
    const Json& first = rule.at("arguments");
    if (first.size() > arguments.size()) {
        return false;
    }
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (nativeText(first[i]) != arguments[i]) {
            return false;
        }
    }
    const std::string file = rule.value("file", "");
    return file.empty() || (!arguments.empty() && nativeText(file) == arguments.back());
}

}  // namespace

int play(const fs::path& program, const NativeString& name,
         const std::vector<NativeString>& arguments) {
    const fs::path directory =
        program.parent_path() / (program.filename().native() + nativeText(".d"));
    record(directory, "call", encodeArguments(arguments));
    if (!arguments.empty() && arguments.front() == nativeText("-stay_open")) {
        record(directory, "name", encodeArguments({name}));
        return playLongLived(directory);
    }
    const Json scenario = readScenario(directory);
    for (const Json& rule : scenario.at("calls")) {
        if (isFor(rule, arguments)) {
            return playRule(directory, rule);
        }
    }
    return arguments == std::vector{nativeText("--version")} ? 0 : kNoRuleExitCode;
}

}  // namespace stand_in
