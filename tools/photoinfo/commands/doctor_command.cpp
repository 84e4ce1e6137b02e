#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <system_error>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/command.h"
#include "photoinfo/commands/doctor_report.h"
#include "photoinfo/platform.h"
#include "photoinfo/show/text.h"
#include "photoinfo/tool/child_process.h"
#include "photoinfo/tool/exiftool_tool.h"
#include "photoinfo/tool/preview_call.h"
#include "photoinfo/tool/read_ahead.h"

namespace photoinfo {

namespace {

namespace fs = std::filesystem;
using enum CheckState;

constexpr std::string_view kVersionTag = "ExifToolVersion";

bool isFile(const fs::path& file) {
    std::error_code error;
    return fs::is_regular_file(file, error);
}

// The tool says more behind the first line.
std::string versionOf(const fs::path& exiv2) {
    const std::string text =
        platform::outputOf(exiv2, {fs::path("--version").native()}).value_or("");
    return text.substr(0, text.find_first_of("\r\n"));
}

bool isMetadataRead(const fs::path& photo) {
    bool isRight = false;
    exiv2_wp::createImageMetadata(photo, [&isRight](const exiv2_wp::SExivMetadataInfo& info) {
        isRight = info.cameraModel == kProbeModel;
    });
    return isRight;
}

std::string readTag(const fs::path& file, std::string_view tag) {
    const auto tags = exiftool::readTags(file, "-" + std::string(tag));
    const auto found = tags.find(std::string(tag));
    return found == tags.end() ? std::string() : found->second;
}

bool isMetadataCopied(const ProbePhoto& probe) {
    return exiftool::copyMetadata(probe.file(), probe.freshImage(),
                                  exiftool::ExportMetadataParameters{}) &&
           readTag(probe.freshImage(), "Model") == kProbeModel;
}

/// Tries out what the library asks of the tools, on a photo of its own.
class Examination {
public:
    explicit Examination(const std::string& toolDirectory)
        : toolDirectory_(toolDirectory), directory_(platform::pathOf(toolDirectory)) {}

    DoctorReport run() {
        examineExiv2();
        examineExiftool();
        return report_;
    }

private:
    void examineExiv2() {
        const fs::path program = directory_ / "exiv2.exe";
        const bool isFound = isFile(program);
        add("exiv2.exe", ExitCode::exiv2, isFound ? ok : missing, isFound ? "found" : "");
        const bool isStarted = isFound && exiv2_wp::initialize(directory_);
        add("exiv2 starts", ExitCode::exiv2, stateOf(isFound, isStarted),
            isStarted ? versionOf(program) : "");
        const bool isReading = isStarted && isMetadataRead(probe_.file());
        add("exiv2 reads", ExitCode::exiv2, stateOf(isStarted, isReading),
            isReading ? "the metadata of a photo" : "");
        const bool isSpoken = isReading && speaksPreviewCall(probe_);
        const CheckState preview = isSpoken ? ok : (isReading ? missing : notTried);
        add("exiv2 previews", ExitCode::previewCall, preview,
            isSpoken    ? "the preview call is known"
            : isReading ? "the preview call is not known; the exiv2 companion knows it"
                        : "");
        examineReadingAhead(isReading, program);
    }

    // Lists are read without it too, file by file.
    void examineReadingAhead(bool isReading, const fs::path& program) {
        const bool isKnown = isReading && knowsReadCall(program, probe_.file());
        add("exiv2 reads ahead", ExitCode::success, isKnown ? ok : (isReading ? missing : notTried),
            isKnown     ? "many photos by one run"
            : isReading ? "a run for each photo; the exiv2.exe of this project reads many by one"
                        : "");
    }

    void examineExiftool() {
        const bool isFound = isFile(directory_ / "exiftool.exe");
        add("exiftool.exe", ExitCode::exiftool, isFound ? ok : missing, isFound ? "found" : "");
        std::optional<Exiftool> tool;
        const std::string version = isFound ? startedVersion(tool) : std::string();
        const bool isStarted = !version.empty();
        add("exiftool stays", ExitCode::exiftool, stateOf(isFound, isStarted),
            isStarted ? "exiftool " + version : "");
        const bool isReading = isStarted && readTag(probe_.file(), "Model") == kProbeModel;
        add("exiftool reads", ExitCode::exiftool, stateOf(isStarted, isReading),
            isReading ? "the tags of a photo" : "");
        const bool isCopying = isReading && isMetadataCopied(probe_);
        add("exiftool copies", ExitCode::exiftool, stateOf(isReading, isCopying),
            isCopying ? "metadata into an image" : "");
    }

    // The version comes as an answer of the running tool; empty: it gave none.
    [[nodiscard]] std::string startedVersion(std::optional<Exiftool>& tool) const {
        try {
            tool.emplace(toolDirectory_);
            return readTag(probe_.file(), kVersionTag);
        } catch (const Failure&) {
            return {};
        }
    }

    static CheckState stateOf(bool isTried, bool isOk) {
        return isOk ? ok : (isTried ? failed : notTried);
    }

    void add(std::string_view check, ExitCode whenNotOk, CheckState state,
             std::string_view detail) {
        report_.add(check, whenNotOk, state, detail);
    }

    std::string toolDirectory_;
    fs::path directory_;
    ProbePhoto probe_;
    DoctorReport report_;
};

class DoctorCommand : public Command {
public:
    CLI::App* addTo(CLI::App& program) override {
        CLI::App* const app = program.add_subcommand(
            "doctor",
            "Tries out the tools of the folder that --tools names, on a photo of its own");
        app->add_flag("--json", isJson_, "One JSON object");
        return app;
    }

    ExitCode run(const SharedOptions& options) override {
        if (options.toolDirectory.empty()) {
            throw Failure(ExitCode::usage, "doctor: name the folder with --tools DIR");
        }
        const DoctorReport report = Examination(options.toolDirectory).run();
        if (isJson_) {
            writeJson(std::cout, {{"tools", options.toolDirectory}, {"checks", report.json()}});
        } else {
            std::cout << printable(options.toolDirectory) << '\n';
            report.table().write(std::cout);
        }
        return report.exitCode();
    }

private:
    bool isJson_ = false;
};

}  // namespace

std::unique_ptr<Command> makeDoctorCommand() {
    return std::make_unique<DoctorCommand>();
}

}  // namespace photoinfo
