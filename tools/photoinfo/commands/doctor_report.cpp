#include "photoinfo/commands/doctor_report.h"

namespace photoinfo {

namespace {

constexpr std::string_view nameOf(CheckState state) {
    switch (state) {
        case CheckState::ok:
            return "ok";
        case CheckState::missing:
            return "missing";
        case CheckState::failed:
            return "failed";
        case CheckState::warns:
            return "warns";
        case CheckState::notTried:
            break;
    }
    return "not tried";
}

// Previews are the one thing that an editor can do without.
constexpr int severityOf(ExitCode code) {
    switch (code) {
        case ExitCode::success:
            return 0;
        case ExitCode::previewCall:
            return 1;
        default:
            return 2;
    }
}

}  // namespace

void DoctorReport::add(std::string_view check, ExitCode whenNotOk, CheckState state,
                       std::string_view detail) {
    checks_.push_back({std::string(check), state, std::string(detail)});
    if (state != CheckState::ok && severityOf(whenNotOk) > severityOf(exitCode_)) {
        exitCode_ = whenNotOk;
    }
}

Table DoctorReport::table() const {
    Table table;
    for (const Check& check : checks_) {
        std::string result(nameOf(check.state));
        if (!check.detail.empty()) {
            result += ": " + check.detail;
        }
        table.row(check.name, result);
    }
    return table;
}

Json DoctorReport::json() const {
    Json list = Json::array();
    for (const Check& check : checks_) {
        list.push_back({{"check", check.name},
                        {"state", nameOf(check.state)},
                        {"detail", toJson(check.detail)}});
    }
    return list;
}

}  // namespace photoinfo
