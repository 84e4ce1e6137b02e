#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/command.h"
#include "photoinfo/commands/doctor_report.h"
#include "photoinfo/platform.h"
#include "photoinfo/show/text.h"
#include "photoinfo/tool/child_process.h"
#include "photoinfo/tool/exiv_reader.h"
#include "photoinfo/tool/preview_call.h"
#include "photoinfo/tool/read_ahead.h"

namespace photoinfo {

namespace {

namespace fs = std::filesystem;
using enum CheckState;

using ToolAnswer = std::unordered_map<std::string, std::string>;

constexpr std::string_view kNotWithThis = "not with this exiv2.exe; the one of this project does";
constexpr auto kVersionTag = "ExifToolVersion";

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

std::string valueIn(const ToolAnswer& answer, const std::string& name) {
    const auto found = answer.find(name);
    return found == answer.end() ? std::string() : found->second;
}

std::string readModel(const fs::path& file) {
    return valueIn(exiftool::readTags(file, "-Model"), "Model");
}

// What the tool says beside the tag that it was asked for; empty as a rule.
std::string warningIn(const ToolAnswer& answer) {
    for (const auto& [name, value] : answer) {
        if (name != kVersionTag) {
            return std::string(name).append(": ").append(value);
        }
    }
    return {};
}

exiv2_wp::SLensInfo lensOf(const fs::path& photo) {
    exiv2_wp::SLensInfo lens;
    exiv2_wp::readExiv2Info(
        photo, "", "", [&lens](const exiv2_wp::SLensInfo& info) { lens = info; },
        [](const exiv2_wp::SMetadataExiv&) {}, [] {});
    return lens;
}

bool areBytesExact(const fs::path& photo) {
    constexpr std::array<unsigned char, 8> kFNumber = {0, 0, 0, 8, 0, 0, 0, 1};  // 8/1
    std::int32_t size = 0;
    unsigned char* bytes = nullptr;
    if (!makeExivReader(photo)->getRawExifTag("Exif.Photo.FNumber", &size, &bytes)) {
        return false;
    }
    const bool areExact = std::equal(bytes, bytes + size, kFNumber.begin(), kFNumber.end());
    ::operator delete(bytes);
    return areExact;
}

bool isDistanceRight(float metres) {
    constexpr float kTolerance = 1e-4F;
    return std::abs(metres - kProbeSubjectDistance) < kTolerance;
}

bool isMetadataCopied(const ProbePhoto& probe) {
    return exiftool::copyMetadata(probe.file(), probe.freshImage(),
                                  exiftool::ExportMetadataParameters{}) &&
           readModel(probe.freshImage()) == kProbeModel;
}

/// Tries out what the library asks of the tools, on a photo of its own.
class Examination {
public:
    explicit Examination(const std::string& toolDirectory)
        : directory_(platform::pathOf(toolDirectory)) {}

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
        examinePromises(isReading);
        examineReadingAhead(isReading, program);
    }

    // What the stock tool doesn't do right: an editor can live with that, but should know it.
    void examinePromises(bool isReading) {
        const exiv2_wp::SLensInfo lens = isReading ? lensOf(probe_.file()) : exiv2_wp::SLensInfo{};
        promise("exiv2 lens names", isReading, lens.lensName == kProbeLens,
                "as the photo has them");
        examineBytes(isReading);
        promise("exiv2 distances", isReading, isDistanceRight(lens.subjectDistance), "in metres");
        promise("exiv2 file names", isReading, isReading && isMetadataRead(probe_.anyName()),
                "of any alphabet");
        promise("exiv2 previews", isReading, isReading && speaksPreviewCall(probe_),
                "the preview call is known", ExitCode::previewCall);
    }

    // The library's reader of single tags takes a narrow path: without one it can't be asked about
    // the photo, which is no fault of the tool.
    void examineBytes(bool isReading) {
        constexpr std::string_view kCheck = "exiv2 tag bytes";
        if (isReading && !platform::narrowPathOf(probe_.file())) {
            add(kCheck, ExitCode::success, notTried,
                "the folder of temporary files has characters that the system's code page lacks");
            return;
        }
        promise(kCheck, isReading, isReading && areBytesExact(probe_.file()), "exactly the tag's");
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
        // As an editor starts it, so that what an editor would hear of it is heard here too.
        const ToolAnswer answer =
            isFound && exiftool::initialize(directory_)
                ? exiftool::readTags(probe_.file(), "-" + std::string(kVersionTag))
                : ToolAnswer();
        const std::string version = valueIn(answer, kVersionTag);
        const bool isStarted = !version.empty();
        add("exiftool stays", ExitCode::exiftool, stateOf(isFound, isStarted),
            isStarted ? "exiftool " + version : "");
        const std::string warning = isStarted ? warningIn(answer) : "";
        add("exiftool is quiet", ExitCode::success,
            warning.empty() ? stateOf(false, isStarted) : warns, warning);
        const bool isReading = isStarted && readModel(probe_.file()) == kProbeModel;
        add("exiftool reads", ExitCode::exiftool, stateOf(isStarted, isReading),
            isReading ? "the tags of a photo" : "");
        const bool isCopying = isReading && isMetadataCopied(probe_);
        add("exiftool copies", ExitCode::exiftool, stateOf(isReading, isCopying),
            isCopying ? "metadata into an image" : "");
        if (isFound) {
            exiftool::uninitialize();
        }
    }

    void promise(std::string_view check, bool isTried, bool isKept, std::string_view detail,
                 ExitCode whenNotKept = ExitCode::success) {
        add(check, whenNotKept, isKept ? ok : (isTried ? missing : notTried),
            isKept    ? detail
            : isTried ? kNotWithThis
                      : "");
    }

    static CheckState stateOf(bool isTried, bool isOk) {
        return isOk ? ok : (isTried ? failed : notTried);
    }

    void add(std::string_view check, ExitCode whenNotOk, CheckState state,
             std::string_view detail) {
        report_.add(check, whenNotOk, state, detail);
    }

    fs::path directory_;
    ProbePhoto probe_;
    DoctorReport report_;
};

class DoctorCommand : public Command {
public:
    CLI::App* addTo(CLI::App& program) override {
        CLI::App* const app = program.add_subcommand(
            "doctor", "Tries out the tools of their folder, on a photo of its own");
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
