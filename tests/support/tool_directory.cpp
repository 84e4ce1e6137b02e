#include "support/tool_directory.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <system_error>

#include "support/shared_file.h"
#include "support/wait_until.h"

namespace test_support {

namespace {

using Json = nlohmann::json;
namespace fs = std::filesystem;

fs::path fromUtf8(std::string_view text) {
    return {std::u8string(reinterpret_cast<const char8_t*>(text.data()), text.size())};
}

void writeFile(const fs::path& file, std::string_view bytes) {
    std::ofstream(file, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

fs::path uniqueFolder(std::string_view prefix) {
    static std::atomic<unsigned> count = 0;
    static const unsigned seed = std::random_device{}();
    const std::string name =
        std::string(prefix) + std::to_string(seed) + "-" + std::to_string(count++);
    return fs::temp_directory_path() / fromUtf8(name);
}

Arguments decodeArguments(const std::string& bytes) {
    Arguments arguments;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t colon = bytes.find(':', at);
        const std::size_t count = std::stoul(bytes.substr(at, colon - at));
        NativeString argument(count, 0);
        std::memcpy(argument.data(), bytes.data() + colon + 1,
                    count * sizeof(NativeString::value_type));
        arguments.push_back(argument);
        at = colon + 1 + count * sizeof(NativeString::value_type);
    }
    return arguments;
}

}  // namespace

TemporaryDirectory::TemporaryDirectory(std::string_view prefix) : path_(uniqueFolder(prefix)) {
    fs::create_directories(path_);
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path TemporaryDirectory::makeFile(std::string_view name, std::string_view bytes) const {
    fs::path file = path_ / fromUtf8(name);
    fs::create_directories(file.parent_path());
    writeFile(file, bytes);
    return file;
}

struct ToolDirectory::Scenario {
    Json json = {{"calls", Json::array()}, {"requests", Json::array()}};
    fs::path folder;
    int stored = 0;

    // Puts bytes, which JSON can't hold, into a file beside the scenario; answers its name.
    std::string store(std::string_view bytes) {
        if (bytes.empty()) {
            return {};
        }
        std::string name = "bytes-" + std::to_string(stored++);
        writeFile(folder / name, bytes);
        return name;
    }

    Json rule(const Answer& answer) {
        return {{"output", store(answer.output)},
                {"error", store(answer.error)},
                {"exitCode", answer.exitCode},
                {"signal", answer.signal},
                {"repeat", answer.repeat},
                {"gate", answer.gate},
                {"gateBehindOutput", answer.gateBehindOutput},
                {"echoInput", answer.echoInput}};
    }
};

ToolDirectory::ToolDirectory(std::string_view tool, std::string_view folderPrefix)
    : folder_(std::make_shared<TemporaryDirectory>(folderPrefix)),
      tool_(tool),
      scenario_(std::make_unique<Scenario>()) {
    moveIn();
}

ToolDirectory::ToolDirectory(std::string_view tool, const ToolDirectory& neighbour)
    : folder_(neighbour.folder_), tool_(tool), scenario_(std::make_unique<Scenario>()) {
    moveIn();
}

ToolDirectory::~ToolDirectory() = default;

void ToolDirectory::moveIn() {
    scenario_->folder = path() / (tool_ + ".d");
    fs::create_directories(scenario_->folder / "record");
    writeScenario();
    std::error_code error;
    fs::create_hard_link(STAND_IN_TOOL, toolPath(), error);
    if (error) {
        fs::copy_file(STAND_IN_TOOL, toolPath());
    }
}

fs::path ToolDirectory::toolPath() const {
    return path() / tool_;
}

void ToolDirectory::answer(const std::vector<std::string>& firstArguments, const Answer& answer,
                           const fs::path& file) {
    Json rule = scenario_->rule(answer);
    rule["arguments"] = firstArguments;
    if (!file.empty()) {
        rule["file"] = utf8(file);
    }
    scenario_->json["calls"].push_back(rule);
    writeScenario();
}

void ToolDirectory::answerMetadata(std::string_view printAll, std::string_view summary,
                                   const fs::path& file) {
    answer({"-PXEkycv"}, {.output = std::string(printAll)}, file);
    answer({"pr"}, {.output = std::string(summary)}, file);
}

void ToolDirectory::knowReadCall() {
    scenario_->json["knowsReadCall"] = true;
    writeScenario();
}

void ToolDirectory::answerRequest(std::string_view part, const RequestAnswer& answer) {
    Json rule = scenario_->rule(answer.answer);
    rule["contains"] = part;
    rule["times"] = answer.times;
    rule["echo"] = answer.echo;
    rule["ready"] = answer.ready;
    rule["closeOutput"] = answer.closeOutput;
    rule["exit"] = answer.exit;
    scenario_->json["requests"].push_back(rule);
    writeScenario();
}

void ToolDirectory::live(const LongLife& life) {
    scenario_->json["exitAtStart"] = life.exitAtStart;
    scenario_->json["ignoreQuit"] = life.ignoreQuit;
    writeScenario();
}

void ToolDirectory::openGate(std::string_view gate) const {
    writeFile(scenario_->folder / fromUtf8(gate), "open");
}

std::vector<Arguments> ToolDirectory::calls() const {
    std::vector<Arguments> calls;
    for (const fs::path& event : events("call")) {
        calls.push_back(decodeArguments(readSharedFile(event)));
    }
    return calls;
}

std::size_t ToolDirectory::countCalls(std::string_view firstArgument) const {
    const std::vector<Arguments> all = calls();
    return static_cast<std::size_t>(
        std::count_if(all.begin(), all.end(), [&](const Arguments& arguments) {
            return !arguments.empty() && arguments.front() == native(firstArgument);
        }));
}

std::vector<fs::path> ToolDirectory::startPaths() const {
    std::vector<fs::path> paths;
    for (const fs::path& event : events("name")) {
        paths.emplace_back(decodeArguments(readSharedFile(event)).front());
    }
    return paths;
}

std::vector<std::string> ToolDirectory::requests() const {
    std::vector<std::string> requests;
    for (const fs::path& event : events("request")) {
        requests.push_back(readSharedFile(event));
    }
    return requests;
}

std::size_t ToolDirectory::countQuits() const {
    return events("quit").size();
}

std::vector<unsigned long> ToolDirectory::processIds() const {
    std::vector<unsigned long> ids;
    for (const fs::path& event : events("call")) {
        ids.push_back(std::stoul(event.filename().string().substr(21, 8)));
    }
    return ids;
}

bool ToolDirectory::waitForCalls(std::size_t count) const {
    return waitForEvents("call", count);
}

bool ToolDirectory::waitForEvents(std::string_view kind, std::size_t count) const {
    return waitUntil([&] { return events(kind).size() >= count; });
}

// Replaced as a whole, since a tool may be reading it.
void ToolDirectory::writeScenario() const {
    writeFile(scenario_->folder / "scenario.new", scenario_->json.dump());
    renameSharedFile(scenario_->folder / "scenario.new", scenario_->folder / "scenario.json");
}

std::vector<fs::path> ToolDirectory::events(std::string_view kind) const {
    std::vector<fs::path> found;
    const fs::path suffix = "-" + std::string(kind);
    for (const fs::directory_entry& entry : fs::directory_iterator(scenario_->folder / "record")) {
        if (entry.path().filename().native().ends_with(suffix.native())) {
            found.push_back(entry.path());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::string utf8(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

NativeString native(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

}  // namespace test_support
