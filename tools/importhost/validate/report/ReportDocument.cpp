#include "importhost/validate/report/ReportDocument.h"

#include "hostkit/system/Text.h"
#include "importhost/console/Program.h"
#include "importhost/validate/report/FileFacts.h"
#include "importhost/validate/report/JsonAccess.h"
#include "importhost/validate/run/CheckGroups.h"

#include <algorithm>
#include <cctype>

namespace importhost::validate {

namespace {

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    return lower;
}

Json countsJson(const RunResult& result) {
    Json counts = {{"checks", result.checks.size()}};
    for (const Verdict verdict : {Verdict::Pass, Verdict::Warn, Verdict::Skip, Verdict::Fail, Verdict::Crash,
                                  Verdict::Timeout}) {
        counts[lowerCase(verdictName(verdict))] = result.count(verdict);
    }
    return counts;
}

Json pluginJson(const std::filesystem::path& path, const Json& offers) {
    const FileFacts facts = factsOf(path);
    return {{"path", hostkit::toUtf8(path)},
            {"bytes", facts.bytes},
            {"modified", facts.modified},
            {"version", libraryVersion(path)},
            {"offers", offers}};
}

Json runJson(const RunFacts& facts) {
    return {{"command", facts.command},
            {"profile", facts.profile},
            {"level", facts.options.level},
            {"only", facts.pattern},
            {"seed", std::to_string(facts.options.seed)},       // as text: many readers keep 53 bits of a number
            {"ownSamples", facts.options.files.empty()},
            {"started", dateText(facts.started)},
            {"seconds", facts.seconds}};
}

Json checkJson(const CheckResult& result, std::string_view group) {
    return {{"id", result.check->id},
            {"group", group},
            {"level", result.check->level},
            {"verdict", lowerCase(verdictName(result.verdict))},
            {"isBad", isBad(result.verdict)},
            {"reason", result.reason},
            {"seconds", result.seconds},
            {"description", result.check->description},
            {"failures", result.failures},
            {"warnings", result.warnings},
            {"notes", result.notes},
            {"calls", result.calls},
            {"errorOutput", result.errorOutput},
            {"repeat", result.repeat}};
}

// By what the plug-in said of a file when it was described for the report.
bool isImported(const Json& facts) {
    const Json& streams = member(facts, "streams");
    const Json& first = streams.is_array() && !streams.empty() ? streams.front() : Json();
    const Json& formats = member(facts, "pixelFormats");
    return (member(first, "video").is_object() && formats.is_array() && !formats.empty()) ||
           member(first, "sound").is_object();
}

// A run of other checks may not have looked; one that crashed while the file was described is told of elsewhere.
std::vector<std::string> notImported(const RunFacts& facts, const RunResult& result, const Json& files) {
    std::vector<std::string> names = result.notImported();
    if (names.empty() && !facts.options.files.empty()) {
        for (const Json& file : files) {
            if (member(file, "facts").is_object() && !isImported(member(file, "facts"))) {
                names.push_back(textOf(file, "name"));
            }
        }
    }
    return names;
}

void dropPictures(Json& json) {
    if (json.is_object()) {
        json.erase("png");
    }
    for (Json& part : json) {
        if (part.is_structured()) {
            dropPictures(part);
        }
    }
}

}  // namespace

Json reportDocument(const RunFacts& facts, const RunResult& result, const FileDescriptions& descriptions) {
    Json checks = Json::array();
    for (const CheckResult& one : result.checks) {
        checks.push_back(checkJson(one, groupOf(*one.check)));
    }
    return {{"schema", kReportSchema},
            {"tool", {{"name", "importhost"}, {"version", programVersion()}}},
            {"isGood", result.isGood()},
            {"notImported", notImported(facts, result, descriptions.files)},
            {"counts", countsJson(result)},
            {"plugin", pluginJson(facts.options.plugin, descriptions.offers)},
            {"run", runJson(facts)},
            {"files", descriptions.files},
            {"checks", checks}};
}

std::string documentText(const Json& document) {
    Json light = document;
    dropPictures(light);
    return light.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace importhost::validate
