#include "support/stand_in_scenario.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <string_view>
#include <thread>

#include "support/read_file.h"
#include "support/shared_file.h"

namespace stand_in {

namespace {

namespace fs = std::filesystem;

using test_support::readFile;

// A gate is a file that the test makes when it lets the tool go on.
void waitForGate(const fs::path& directory, const std::string& gate) {
    while (!gate.empty() && !fs::exists(directory / gate)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

// Writes what the rule says to both outputs, as often as it says; standard output to `capture`
// where there is one.
bool writeOutputs(const fs::path& directory, const Json& rule, std::string* capture) {
    const std::string error = rule.value("error", "");
    if (!error.empty()) {
        platform::write(2, readFile(directory / error));
    }
    const std::string output = rule.value("output", "");
    const std::string bytes = output.empty() ? std::string() : readFile(directory / output);
    for (int i = 0; i < rule.value("repeat", 1); ++i) {
        if (capture != nullptr) {
            *capture += bytes;
        } else if (!platform::write(1, bytes)) {
            return false;
        }
    }
    return true;
}

void echoInput() {
    std::array<char, 4096> buffer{};
    while (const std::size_t count = platform::read(buffer.data(), buffer.size())) {
        platform::write(1, {buffer.data(), count});
    }
}

}  // namespace

Json readScenario(const fs::path& directory) {
    return Json::parse(test_support::readSharedFile(directory / "scenario.json"));
}

NativeString nativeText(const std::string& utf8) {
    return fs::path(std::u8string(utf8.begin(), utf8.end())).native();
}

void record(const fs::path& directory, const std::string& kind, const std::string& bytes) {
    static int sequence = 0;
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    std::array<char, 96> name{};
    std::snprintf(name.data(), name.size(), "%020lld-%08lu-%06d-%s", static_cast<long long>(now),
                  platform::processId(), sequence++, kind.c_str());
    fs::create_directories(directory / "record");
    const fs::path unfinished = directory / ("unfinished-" + std::string(name.data()));
    std::ofstream(unfinished, std::ios::binary) << bytes;
    test_support::renameSharedFile(unfinished, directory / "record" / name.data());
}

int playRule(const fs::path& directory, const Json& rule, std::string* capture) {
    waitForGate(directory, rule.value("gate", ""));
    writeOutputs(directory, rule, capture);
    if (rule.value("echoInput", false)) {
        echoInput();
    }
    waitForGate(directory, rule.value("gateBehindOutput", ""));
    if (const int signal = rule.value("signal", 0); signal != 0) {
        platform::dieBySignal(signal);
    }
    return rule.value("exitCode", 0);
}

}  // namespace stand_in
