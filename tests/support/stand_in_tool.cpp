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

const Json* findRule(const Json& scenario, const std::vector<NativeString>& arguments) {
    for (const Json& rule : scenario.at("calls")) {
        if (isFor(rule, arguments)) {
            return &rule;
        }
    }
    return nullptr;
}

bool isReadCall(const std::vector<NativeString>& arguments) {
    return !arguments.empty() && arguments.front() == nativeText("--read");
}

// Answers for each file as its two ordinary runs would, by the same rules.
int playReadCall(const fs::path& directory, const Json& scenario,
                 const std::vector<NativeString>& arguments) {
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        std::string line = std::to_string(i - 1);
        std::string outputs;
        for (const std::vector<NativeString>& run :
             {std::vector{nativeText("-PXEkycv"), nativeText("-q"), arguments[i]},
              std::vector{nativeText("pr"), arguments[i]}}) {
            const Json* const rule = findRule(scenario, run);
            const std::size_t sizeBefore = outputs.size();
            const int exitCode =
                rule == nullptr ? kNoRuleExitCode : playRule(directory, *rule, &outputs);
            line +=
                ' ' + std::to_string(exitCode) + ' ' + std::to_string(outputs.size() - sizeBefore);
        }
        if (!platform::write(1, line + '\n' + outputs)) {
            return 1;
        }
    }
    return 0;
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
    if (const Json* const rule = findRule(scenario, arguments)) {
        return playRule(directory, *rule);
    }
    if (isReadCall(arguments) && scenario.value("knowsReadCall", false)) {
        return playReadCall(directory, scenario, arguments);
    }
    return arguments == std::vector{nativeText("--version")} ? 0 : kNoRuleExitCode;
}

}  // namespace stand_in
