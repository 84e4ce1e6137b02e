#include "exiftool/exiftool_host.h"

#include <filesystem>
#include <fstream>
#include <future>
#include <iostream>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/latch.h"
#include "support/wait_until.h"
#include "vesk_logger/log_sink.h"

// A host application in small: does what its arguments say, in order, and prints what came of it.
namespace {

struct ItemText {
    std::string operator()(vesk::LogMessageType type) const {
        return std::to_string(static_cast<int>(type));
    }
    std::string operator()(const vesk::LogLiteral& literal) const { return literal.text; }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(const std::wstring&) const { return "wide"; }
};

void printLine(const std::vector<vesk::LogItem>& items) {
    std::string line = "log";
    for (const vesk::LogItem& item : items) {
        line += "|" + std::visit(ItemText{}, item);
    }
    std::cout << line << std::endl;
}

void waitForFile(const std::filesystem::path& file) {
    if (!test_support::waitUntil([&] { return std::filesystem::exists(file); })) {
        std::cout << "nobody made " << file.filename().string() << std::endl;
    }
}

void printTags(const std::filesystem::path& file, const std::string& arguments) {
    const auto tags = exiftool::readTags(file, arguments);
    std::cout << "tags";
    for (const auto& [name, value] : std::map(tags.begin(), tags.end())) {
        std::cout << " " << name << "=" << value;
    }
    std::cout << std::endl;
}

// Returns what each thread was told; none begins before all are there.
std::vector<bool> initializeByThreads(const std::filesystem::path& directory, std::size_t count) {
    std::vector<std::future<bool>> results;
    test_support::Latch start(static_cast<std::ptrdiff_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
        results.push_back(std::async(std::launch::async, [&start, &directory] {
            start.arrive_and_wait();
            return exiftool::initialize(directory);
        }));
    }
    std::vector<bool> told;
    for (std::future<bool>& result : results) {
        told.push_back(result.get());
    }
    return told;
}

class Arguments {
public:
    explicit Arguments(std::vector<std::string> values) : values_(std::move(values)) {}
    [[nodiscard]] bool isEmpty() const { return next_ == values_.size(); }
    std::string take() { return isEmpty() ? std::string() : values_[next_++]; }
    std::filesystem::path takePath() {
        const std::string text = take();
        return std::u8string(text.begin(), text.end());
    }

private:
    std::vector<std::string> values_;
    std::size_t next_ = 0;
};

// Prints what a call came to, after what the call itself has logged.
template <typename Result>
void print(const std::string& what, const Result& result) {
    std::cout << what << " " << result << std::endl;
}

bool perform(const std::string& command, Arguments& arguments) {
    if (command == "init") {
        print(command, exiftool::initialize(arguments.takePath()));
    } else if (command == "init-by-eight-threads") {
        for (const bool isRunning : initializeByThreads(arguments.takePath(), 8)) {
            print("init", isRunning);
        }
    } else if (command == "init-in-a-thread-that-ends") {
        std::thread([directory = arguments.takePath()] {
            print("init", exiftool::initialize(directory));
        }).join();
    } else if (command == "uninit") {
        exiftool::uninitialize();
        std::cout << command << std::endl;
    } else if (command == "tags") {
        const std::filesystem::path file = arguments.takePath();
        printTags(file, arguments.take());
    } else if (command == "lens") {
        print(command, exiftool::getLensPrettyName(arguments.takePath()));
    } else if (command == "copy") {
        const std::filesystem::path source = arguments.takePath();
        print(command, exiftool::copyMetadata(source, arguments.takePath(),
                                              exiftool::ExportMetadataParameters{}));
    } else if (command == "touch") {
        std::ofstream(arguments.takePath()) << "touched";
    } else if (command == "wait") {
        waitForFile(arguments.takePath());
    } else if (command == "fork-and-exit") {
        exiftool_host::forkAndExit();
    } else if (command == "die") {
        exiftool_host::dieAtOnce();
    } else {
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    vesk::setLogSink(printLine);
    Arguments arguments(exiftool_host::utf8Arguments(argc, argv));
    while (!arguments.isEmpty()) {
        const std::string command = arguments.take();
        if (!perform(command, arguments)) {
            std::cout << "unknown command " << command << std::endl;
            return 2;
        }
    }
    return 0;
}
