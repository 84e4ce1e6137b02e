#include "product/round.h"

#include <algorithm>
#include <fstream>

#include "exiftool/host_program.h"
#include "real_exiftool/fresh_images.h"
#include "real_exiftool/real_tool.h"
#include "support/photo_list.h"
#include "support/read_file.h"
#include "support/run_program.h"

namespace product {

namespace fs = std::filesystem;
using test_support::readFile;
using test_support::utf8;

namespace {

// Of the sample, which has tags of every kind: a text, a number, a fraction, one with a sign,
// bytes, and one that it lacks.
constexpr const char* kKeys[] = {"Exif.Image.Model",        "Exif.Photo.ISOSpeedRatings",
                                 "Exif.Photo.ExposureTime", "Exif.Photo.ExposureBiasValue",
                                 "Exif.Photo.ExifVersion",  "Exif.Photo.Nothing"};

void writeFile(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

void makeToolFolder(const fs::path& folder, const fs::path& tool) {
    fs::create_directory(folder);
    fs::copy_file(tool, folder / "exiv2.exe");
}

// Takes "./" out wherever it stands, in the system's way of writing it; "../" stays.
void eraseCurrentFolder(std::string& text) {
    for (const std::string here : {".\\\\", ".\\", "./"}) {  // the first in JSON
        for (std::size_t at = 0; (at = text.find(here, at)) != std::string::npos;) {
            const bool isParent = at > 0 && text[at - 1] == '.';
            if (isParent) {
                at += here.size();
            } else {
                text.erase(at, here.size());
            }
        }
    }
}

std::string lineAt(const std::string& text, std::size_t begin) {
    constexpr std::size_t kMost = 300;
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    return begin < text.size() ? text.substr(begin, std::min(end - begin, kMost)) : "(the end)";
}

}  // namespace

// Paths are made absolute before the current folder, perhaps that of another drive, is left.
Round::Round()
    : photoinfo_(fs::absolute(PHOTOINFO)),
      consumer_(fs::absolute(CONSUMER)),
      exiftool_(fs::absolute(test_support::realToolFolder())) {
    makeToolFolder(folder_.path() / "stock", STOCK_EXIV2);
    makeToolFolder(folder_.path() / "ours", EXIV2_TOOL);
    fs::create_directory(folder_.path() / "outputs");
    const fs::path photos = folder_.path() / "photos";
    fs::create_directory(photos);
    const std::string sample = readFile(SAMPLE);
    writeFile(photos / "sample.jpg", sample);
    writeFile(photos / "half.jpg", sample.substr(0, sample.size() / 2));
    writeFile(photos / "no_photo.jpg", "no photo");
    for (const fs::path& photo : test_support::listFiles(PHOTOS)) {
        if (!photo.empty()) {
            fs::copy_file(photo, photos / photo.filename());
        }
    }
    for (const fs::path& photo : test_support::listFiles(photos)) {
        photos_.push_back(utf8(photo.filename()));
    }
    fs::current_path(photos);
}

Round::~Round() {
    fs::current_path(before_);
}

std::vector<Question> Round::questions() const {
    std::vector<Question> questions;
    addExiv2Questions("stock", questions);
    addExiv2Questions("ours", questions);
    addOwnQuestions(questions);
    addExiftoolQuestions(questions);
    return questions;
}

std::string Round::ask(const Question& question) const {
    const fs::path outputs = folder_.path() / "outputs";
    fs::remove_all(outputs);
    fs::create_directory(outputs);
    makeExports();
    std::string answer;
    for (const Question::Run& run : question.runs) {
        const test_support::ProgramResult result = test_support::runProgram(
            run.program, test_support::nativeArguments(run.arguments), folder_.path());
        answer += "exit code " + std::to_string(result.exitCode) + "\n";
        answer += result.output;
    }
    if (!question.output.empty()) {
        answer += readFile(outputs / question.output);
    }
    eraseCurrentFolder(answer);
    return answer;
}

Question::Run Round::photoinfo(const std::string& tools, std::vector<std::string> arguments) const {
    const fs::path folder = tools == "exiftool" ? exiftool_ : folder_.path() / tools;
    arguments.insert(arguments.begin(), {"--tools", utf8(folder)});
    return {photoinfo_, arguments};
}

Question::Run Round::aboutAll(const std::string& tools, std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), photos_.begin(), photos_.end());
    return photoinfo(tools, arguments);
}

Question::Run Round::consumer(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), photos_.begin(), photos_.end());
    return {consumer_, arguments};
}

void Round::addExiv2Questions(const std::string& tools, std::vector<Question>& questions) const {
    for (const std::string command : {"summary", "info", "batch", "orientation", "xmp"}) {
        questions.push_back({tools + "_" + command, {aboutAll(tools, {command, "--json"})}});
    }
    questions.push_back({tools + "_scan_json", {photoinfo(tools, {"scan", ".", "--json"})}});
    questions.push_back({tools + "_report",
                         {photoinfo(tools, {"report", ".", "-o", "../outputs/report.html"})},
                         "report.html"});
    questions.push_back(
        {tools + "_consumer",
         {consumer({"exiv2", "../outputs/answers.txt", utf8(folder_.path() / tools)})},
         "answers.txt"});
}

// What costs too much time with a tool that reads photo by photo, or what only ours can.
void Round::addOwnQuestions(std::vector<Question>& questions) const {
    for (const std::string command : {"summary", "info", "batch", "orientation", "xmp"}) {
        questions.push_back({"ours_" + command + "_text", {aboutAll("ours", {command})}});
    }
    questions.push_back({"ours_scan_text", {photoinfo("ours", {"scan", "."})}});
    questions.push_back({"ours_scan_csv", {photoinfo("ours", {"scan", ".", "--csv"})}});
    Question tags{"ours_tags", {}};
    for (const char* key : kKeys) {
        tags.runs.push_back(photoinfo("ours", {"tag", "sample.jpg", key, "--json"}));
    }
    questions.push_back(tags);
    questions.push_back(
        {"ours_preview",
         {photoinfo("ours", {"preview", "sample.jpg", "-o", "../outputs/preview.jpg", "--json"})},
         "preview.jpg"});
    questions.push_back(
        {"ours_consumer_previews",
         {consumer({"previews", "../outputs/answers.txt", utf8(folder_.path() / "ours")})},
         "answers.txt"});
}

void Round::addExiftoolQuestions(std::vector<Question>& questions) const {
    Question tags{"exiftool_tags", {}};
    for (const std::string& photo : photos_) {
        if (photo == "sample.jpg" || photo.starts_with("C")) {
            tags.runs.push_back(photoinfo("exiftool", {"tags", photo, "Make", "Model", "Lens*",
                                                       "ExposureTime", "FNumber", "--json"}));
        }
    }
    questions.push_back(tags);
    questions.push_back({"exiftool_lens", {aboutAll("exiftool", {"lens", "--json"})}});
    for (const std::string format : {"jpg", "png", "tif"}) {
        const std::string image = "../outputs/export." + format;
        questions.push_back({"exiftool_copy_" + format,
                             {photoinfo("exiftool", {"copy", "sample.jpg", image, "--rating", "3",
                                                     "--software", "Editor 1.0"}),
                              photoinfo("ours", {"summary", image, "--json"})}});
    }
    questions.push_back({"exiftool_consumer",
                         {consumer({"exiftool", "../outputs/answers.txt",
                                    utf8(folder_.path() / "ours"), utf8(exiftool_)})},
                         "answers.txt"});
}

void Round::makeExports() const {
    const fs::path outputs = folder_.path() / "outputs";
    writeFile(outputs / "export.jpg", test_support::freshJpeg());
    writeFile(outputs / "export.png", test_support::freshPng());
    writeFile(outputs / "export.tif", test_support::freshTiff());
}

const Round& theRound() {
    static const Round round;
    return round;
}

std::string firstDifference(const std::string& recorded, const std::string& answer) {
    if (recorded == answer) {
        return {};
    }
    const auto [a, b] =
        std::mismatch(recorded.begin(), recorded.end(), answer.begin(), answer.end());
    const auto at = static_cast<std::size_t>(a - recorded.begin());
    const std::size_t lineFeed = at == 0 ? std::string::npos : recorded.rfind('\n', at - 1);
    const std::size_t begin = lineFeed == std::string::npos ? 0 : lineFeed + 1;
    const auto line = std::count(recorded.begin(), a, '\n') + 1;
    return "line " + std::to_string(line) + ", recorded: " + lineAt(recorded, begin) +
           "\nanswered: " + lineAt(answer, begin);
}

}  // namespace product
