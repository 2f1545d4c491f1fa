// The report as JSON.
#include "importhost/replay/ReplayReport.h"

#include "hostkit/system/Text.h"

#include <nlohmann/json.hpp>

namespace importhost {

namespace {

using Json = nlohmann::ordered_json;

Json fileJson(const replay::MappedFile& file) {
    return {
        {"logged", file.logged},
        {"file", file.file ? Json(hostkit::toUtf8(*file.file)) : Json(nullptr)},
        {"calls", file.calls},
    };
}

Json callJson(const ReplayedCall& call) {
    return {
        {"number", call.number},
        {"line", call.logged->line},
        {"name", call.logged->name},
        {"selector", call.logged->selector},
        {"async", call.logged->entry == replay::Entry::Async},
        {"text", call.text},
        {"assumed", call.assumed},
        {"skipped", call.skipped ? Json(*call.skipped) : Json(nullptr)},
        {"logged", call.logged->result ? Json(*call.logged->result) : Json(nullptr)},
        {"now", call.skipped ? Json(nullptr) : Json(call.result)},
        {"differs", call.resultDiffers()},
        {"messagesGone", call.messages.gone},
        {"messagesAdded", call.messages.added},
    };
}

}  // namespace

Json asJson(const ReplayReport& report) {
    Json json = {
        {"log", hostkit::toUtf8(report.logFile)},
        {"application", report.log.application},
        {"complete", report.log.isComplete},
        {"threads", report.log.threads},
        {"files", Json::array()},
        {"played", report.played},
        {"calls", Json::array()},
        {"remarks", report.log.remarks},
    };
    for (const replay::MappedFile& file : report.files.entries()) {
        json["files"].push_back(fileJson(file));
    }
    for (const ReplayedCall& call : report.calls) {
        json["calls"].push_back(callJson(call));
    }
    for (const std::string& remark : report.remarks) {
        json["remarks"].push_back(remark);
    }
    const ReplayTotals totals = report.totals();
    json["totals"] = {
        {"replayed", totals.replayed},
        {"skipped", totals.skipped},
        {"resultsThatDiffer", totals.results},
        {"callsWhoseMessagesDiffer", report.comparesMessages ? Json(totals.messages) : Json(nullptr)},
        {"withoutResult", totals.withoutResult},
    };
    return json;
}

}  // namespace importhost
