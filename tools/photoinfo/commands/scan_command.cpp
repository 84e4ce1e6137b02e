#include <cmath>
#include <iostream>
#include <string>
#include <vector>

#include "photoinfo/commands/summary.h"
#include "photoinfo/folder/columns.h"
#include "photoinfo/folder/csv.h"
#include "photoinfo/folder/folder_scan.h"
#include "photoinfo/show/known_values.h"
#include "photoinfo/show/shown_values.h"
#include "photoinfo/show/text.h"

namespace photoinfo {

namespace {

using exiv2_wp::SExivMetadataInfo;

template <typename Show>
std::string shownOrEmpty(const std::optional<float>& value, Show show) {
    return value ? show(*value) : std::string();
}

// What fits on a line of a wide terminal. A photo without metadata has a row too.
std::vector<std::string> shownCells(const ScannedPhoto& photo) {
    const SExivMetadataInfo info = photo.summary.value_or(SExivMetadataInfo());
    const std::optional<float> rating = knownRating(info.rating);
    const std::string noRating = photo.summary ? "none" : "";
    return {photo.file,
            photo.summary ? info.cameraModel : "no metadata",
            info.lensModel.empty() ? photo.lensName : info.lensModel,
            shownOrEmpty(knownExposure(info.exposureTime), showExposureTime),
            shownOrEmpty(knownExposure(info.fNumber), showFNumber),
            shownOrEmpty(knownExposure(info.iso), decimal),
            shownOrEmpty(knownExposure(info.focalLength), showMillimetres),
            info.dateTimeIso.empty() ? info.dateTimeOriginal : info.dateTimeIso,
            rating ? showRating(*rating) : noRating};
}

void writeTable(std::ostream& stream, const std::vector<ScannedPhoto>& photos) {
    Columns columns(
        {"File", "Camera", "Lens", "Time", "F-number", "ISO", "Focal length", "Taken", "Rating"});
    for (const ScannedPhoto& photo : photos) {
        if (photo.error.empty()) {
            columns.row(shownCells(photo));
        }
    }
    columns.write(stream);
}

Json documentOf(const std::vector<ScannedPhoto>& photos) {
    Json document = Json::array();
    for (const ScannedPhoto& photo : photos) {
        document.push_back({{"file", photo.file},
                            {"summary", photo.summary ? summaryJson(*photo.summary) : Json()},
                            {"lensName", toJson(photo.lensName)},
                            {"error", toJson(photo.error)}});
    }
    return document;
}

std::string csvCell(const Json& value) {
    const bool isUnknown =
        value.is_null() || (value.is_number_float() && !std::isfinite(value.get<double>()));
    if (isUnknown) {
        return {};
    }
    return value.is_string() ? value.get<std::string>() : value.dump();
}

// The fields of the JSON document as columns; photos without metadata have empty ones.
void writeCsv(std::ostream& stream, const std::vector<ScannedPhoto>& photos) {
    const Json fields = summaryJson({});
    std::vector<std::string> cells = {"file"};
    for (const auto& field : fields.items()) {
        cells.push_back(field.key());
    }
    cells.insert(cells.end(), {"lensName", "error"});
    writeCsvRecord(stream, cells);
    for (const ScannedPhoto& photo : photos) {
        cells = {photo.file};
        const Json summary = photo.summary ? summaryJson(*photo.summary) : Json::object();
        for (const auto& field : fields.items()) {
            cells.push_back(csvCell(summary.value(field.key(), Json())));
        }
        cells.insert(cells.end(), {photo.lensName, photo.error});
        writeCsvRecord(stream, cells);
    }
}

class ScanCommand : public Command {
public:
    CLI::App* addTo(CLI::App& program) override {
        CLI::App* const app = program.add_subcommand(
            "scan", "Camera, lens, exposure, date and rating of every photo below a folder");
        scan_.addOptions(*app);
        CLI::Option* const json =
            app->add_flag("--json", isJson_,
                          "One JSON document: an array with one object a file; unknown values are "
                          "null");
        app->add_flag("--csv", isCsv_,
                      "Comma-separated values with a line of headings; unknown values are empty")
            ->excludes(json);
        return app;
    }

    ExitCode run(const SharedOptions& options) override {
        scan_.begin(options);
        scan_.askAll();
        const std::vector<ScannedPhoto> photos = scan_.takePhotos();
        if (isJson_) {
            writeJson(std::cout, documentOf(photos));
        } else if (isCsv_) {
            writeCsv(std::cout, photos);
        } else {
            writeTable(std::cout, photos);
        }
        std::cout.flush();
        return scan_.close(photos);
    }

private:
    FolderScan scan_;
    bool isJson_ = false;
    bool isCsv_ = false;
};

}  // namespace

std::unique_ptr<Command> makeScanCommand() {
    return std::make_unique<ScanCommand>();
}

}  // namespace photoinfo
