#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Sets up the stand-in tool: a temporary folder that holds it as exiv2.exe or exiftool.exe, the
/// scenario that it plays and the record of how it was called.
namespace test_support {

using NativeString = std::filesystem::path::string_type;
using Arguments = std::vector<NativeString>;

/// A folder of its own in the system's temporary folder; removed with its owner.
class TemporaryDirectory {
public:
    /// The folder's name begins with `prefix` (UTF-8).
    explicit TemporaryDirectory(std::string_view prefix = "exiv2_wrapper-");
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    /// Makes a file (UTF-8 name) with these bytes and returns its path.
    std::filesystem::path makeFile(std::string_view name, std::string_view bytes = "x") const;

private:
    std::filesystem::path path_;
};

/// What the tool does when it is called.
struct Answer {
    std::string output = {};  ///< bytes for standard output
    std::string error = {};   ///< bytes for standard error
    int exitCode = 0;
    int signal = 0;         ///< not 0: the tool dies by it (on Windows: by a crash's code)
    int repeat = 1;         ///< how many times `output` is written
    std::string gate = {};  ///< a gate to wait at before anything is written
    std::string gateBehindOutput = {};  ///< a gate to wait at after that
    bool echoInput = false;  ///< after `output`: all that standard input holds, to its end
};

/// What the long-lived tool does with a request.
struct RequestAnswer {
    Answer answer = {};
    int times = -1;            ///< how many requests this answers; -1: any number
    bool echo = false;         ///< after the output: each line of the request as "Line: TEXT"
    bool ready = true;         ///< then "{ready}" and a line feed
    bool closeOutput = false;  ///< then both outputs are closed
    bool exit = false;         ///< then the tool ends, with the answer's exit code
};

/// How the long-lived tool lives.
struct LongLife {
    bool exitAtStart = false;  ///< ends at once, without a word
    bool ignoreQuit = false;   ///< reads that it should quit, and stays
};

class ToolDirectory {
public:
    /// `tool` is "exiv2.exe" or "exiftool.exe". Until told otherwise it answers --version with exit
    /// code 0 and everything else with exit code 99.
    explicit ToolDirectory(std::string_view tool = "exiv2.exe",
                           std::string_view folderPrefix = "exiv2_wrapper-");
    /// The tool in the folder of the other one, so that both lie side by side.
    ToolDirectory(std::string_view tool, const ToolDirectory& neighbour);
    ToolDirectory(const ToolDirectory&) = delete;
    ToolDirectory& operator=(const ToolDirectory&) = delete;
    ~ToolDirectory();

    [[nodiscard]] const std::filesystem::path& path() const { return folder_->path(); }
    [[nodiscard]] std::filesystem::path toolPath() const;
    /// Makes a file for the tool to be asked about.
    std::filesystem::path makeFile(std::string_view name, std::string_view bytes = "x") const {
        return folder_->makeFile(name, bytes);
    }

    /// Calls that begin with these arguments (UTF-8) get this answer; the first rule that fits
    /// counts. With `file`, only calls whose last argument is that path.
    void answer(const std::vector<std::string>& firstArguments, const Answer& answer,
                const std::filesystem::path& file = {});
    /// The answers to the two runs that read a file's metadata.
    void answerMetadata(std::string_view printAll, std::string_view summary = "",
                        const std::filesystem::path& file = {});
    /// From now on the tool knows the call that reads many files (--read), for which it answers as
    /// the ordinary runs do. A rule for the call itself comes first.
    void knowReadCall();
    /// Requests that contain `part` get this answer; the first rule that fits counts. Others get
    /// "{ready}" alone.
    void answerRequest(std::string_view part, const RequestAnswer& answer);
    /// Tell it before the long-lived tool starts. When its input ends it stays in any case.
    void live(const LongLife& life);

    void openGate(std::string_view gate) const;

    /// The arguments of every call so far, in the order of their start.
    [[nodiscard]] std::vector<Arguments> calls() const;
    /// The calls whose first argument is this.
    [[nodiscard]] std::size_t countCalls(std::string_view firstArgument) const;
    /// The paths by which the long-lived tool was started, as its callers wrote them.
    [[nodiscard]] std::vector<std::filesystem::path> startPaths() const;
    /// The bytes of every request so far, and of every "quit".
    [[nodiscard]] std::vector<std::string> requests() const;
    [[nodiscard]] std::size_t countQuits() const;
    /// The process ids of the tool's calls, in the order of their start.
    [[nodiscard]] std::vector<unsigned long> processIds() const;
    /// Waits until the tool was called, or has recorded an event ("request", "quit", "end",
    /// "name"), so many times. False after two minutes.
    [[nodiscard]] bool waitForCalls(std::size_t count) const;
    [[nodiscard]] bool waitForEvents(std::string_view kind, std::size_t count) const;

private:
    struct Scenario;

    void moveIn();
    void writeScenario() const;
    [[nodiscard]] std::vector<std::filesystem::path> events(std::string_view kind) const;

    std::shared_ptr<TemporaryDirectory> folder_;
    std::string tool_;
    std::unique_ptr<Scenario> scenario_;
};

/// A path as UTF-8.
std::string utf8(const std::filesystem::path& path);

/// Plain ASCII as a native argument, for comparing with recorded ones.
NativeString native(std::string_view ascii);

}  // namespace test_support
