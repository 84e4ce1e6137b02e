#include <array>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <map>
#include <string_view>
#include <thread>
#include <utility>

#include "support/stand_in_scenario.h"

namespace stand_in {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kExecute = "-execute\n";
constexpr std::string_view kQuit = "-stay_open\nfalse\n";
constexpr std::string_view kReady = "{ready}\n";

// The lines of a request, each as a tag of the name "Line", so that a test finds its own again.
std::string echoOf(std::string_view request) {
    std::string echo;
    request.remove_suffix(kExecute.size());
    while (!request.empty()) {
        const std::size_t end = request.find('\n');
        echo += "Line: " + std::string(request.substr(0, end)) + "\n";
        request.remove_prefix(end == std::string_view::npos ? request.size() : end + 1);
    }
    return echo;
}

class LongLivedTool {
public:
    explicit LongLivedTool(fs::path directory) : directory_(std::move(directory)) {}

    int run() {
        const Json scenario = readScenario(directory_);
        if (scenario.value("exitAtStart", false)) {
            return 1;
        }
        std::string request;
        while (readRequest(request)) {
            if (request == kQuit) {
                record(directory_, "quit", request);
                if (!scenario.value("ignoreQuit", false)) {
                    return 0;
                }
                continue;
            }
            record(directory_, "request", request);
            answer(request);
        }
        record(directory_, "end", pending_);
        // The real tool stays when its input ends, on some systems; whoever starts it has to know.
        for (;;) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    }

private:
    bool readRequest(std::string& request) {
        std::array<char, 65536> buffer{};
        for (;;) {
            if (pending_.starts_with(kQuit)) {
                take(kQuit.size(), request);
                return true;
            }
            if (const auto end = endOfRequest(); end != std::string::npos) {
                take(end, request);
                return true;
            }
            const std::size_t count = platform::read(buffer.data(), buffer.size());
            if (count == 0) {
                return false;
            }
            pending_.append(buffer.data(), count);
        }
    }

    // Only a whole line counts as the word that ends a request.
    std::size_t endOfRequest() const {
        if (pending_.starts_with(kExecute)) {
            return kExecute.size();
        }
        const auto at = pending_.find("\n" + std::string(kExecute));
        return at == std::string::npos ? at : at + 1 + kExecute.size();
    }

    void take(std::size_t size, std::string& request) {
        request = pending_.substr(0, size);
        pending_.erase(0, size);
    }

    // The scenario is read anew, so that a test can tell rules while the tool runs.
    void answer(const std::string& request) {
        const Json scenario = readScenario(directory_);
        for (std::size_t i = 0; i < scenario.at("requests").size(); ++i) {
            const Json& rule = scenario["requests"][i];
            const int times = rule.value("times", -1);
            if (request.find(rule.value("contains", "")) == std::string::npos ||
                (times >= 0 && answered_[i] >= times)) {
                continue;
            }
            ++answered_[i];
            answerBy(rule, request);
            return;
        }
        platform::write(1, kReady);
    }

    void answerBy(const Json& rule, const std::string& request) const {
        const int exitCode = playRule(directory_, rule);
        if (rule.value("echo", false)) {
            platform::write(1, echoOf(request));
        }
        if (rule.value("ready", true)) {
            platform::write(1, kReady);
        }
        if (rule.value("closeOutput", false)) {
            platform::closeOutput();
        }
        if (rule.value("exit", false)) {
            std::exit(exitCode);
        }
    }

    fs::path directory_;
    std::map<std::size_t, int> answered_;
    std::string pending_;
};

}  // namespace

int playLongLived(const fs::path& directory) {
    return LongLivedTool(directory).run();
}

}  // namespace stand_in
