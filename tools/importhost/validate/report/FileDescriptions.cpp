#include "importhost/validate/report/FileDescriptions.h"

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/system/ChildProcess.h"
#include "hostkit/system/Text.h"
#include "importhost/reports/ClipReport.h"
#include "importhost/validate/framework/Places.h"
#include "importhost/validate/report/ClipDescription.h"
#include "importhost/validate/report/FileFacts.h"
#include "importhost/validate/report/JsonAccess.h"
#include "importhost/validate/run/Result.h"

#include <fstream>
#include <stdexcept>

namespace importhost::validate {

namespace {

// Long files are looked at in parts only, but a slow disk or a slow codec is no fault.
constexpr std::chrono::seconds kLimitForUserFile{120};
constexpr std::chrono::seconds kLimitForSample{20};

// Samples of later levels exist for one check or another and are no sight.
constexpr int kHighestShownLevel = 2;

struct Subject {
    std::filesystem::path path;
    std::string purpose;                // of a sample
    std::chrono::seconds limit;
};

std::vector<Subject> subjectsOf(const RunOptions& options) {
    std::vector<Subject> subjects;
    for (const std::filesystem::path& file : options.files) {
        subjects.push_back({file, "", options.timeLimit.value_or(kLimitForUserFile)});
    }
    if (options.files.empty()) {
        for (const SampleRow& row : sampleRows()) {
            if (row.kind == ClipKind::Good && row.level <= std::min(kHighestShownLevel, options.level)) {
                subjects.push_back({samplesFolder(options.workFolder) / row.name, std::string(row.purpose),
                                    options.timeLimit.value_or(kLimitForSample)});
            }
        }
    }
    return subjects;
}

std::string dumped(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

void writeJson(const std::filesystem::path& path, const Json& json) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << dumped(json);
    if (!out.flush()) {
        throw std::runtime_error("'" + hostkit::toUtf8(path) + "' cannot be written.");
    }
}

Json readJson(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    Json json = Json::parse(in, nullptr, false);
    return json.is_object() ? json : Json::object();
}

std::vector<std::string> childArguments(const RunOptions& options, const std::filesystem::path& out,
                                        const std::filesystem::path& file) {
    return {"--plugin",          hostkit::toUtf8(options.plugin), "validate", "--describe-to", hostkit::toUtf8(out),
            hostkit::toUtf8(file)};
}

// Why the description is not whole; empty when it is.
std::string problemOf(const hostkit::ChildResult& child, const Json& written, std::chrono::seconds limit) {
    const char* done = member(written, "facts").is_object() ? "Showing this file" : "Asked about this file";
    if (child.timedOut) {
        return std::string(done) + ", the plug-in took more than " + std::to_string(limit.count()) + " seconds.";
    }
    if (!isSet(written, "isWhole")) {
        return std::string(done) + ", the plug-in ended its process: " + exitText(child.exitCode) + ".";
    }
    return child.exitCode == 0 ? "" : "Unloading the plug-in ended its process: " + exitText(child.exitCode) + ".";
}

Json describe(const RunOptions& options, const Subject& subject, Json& offers) {
    const FileFacts facts = factsOf(subject.path);
    Json json = {{"path", hostkit::toUtf8(subject.path)},
                 {"name", hostkit::toUtf8(subject.path.filename())},
                 {"purpose", subject.purpose},
                 {"bytes", facts.bytes},
                 {"modified", facts.modified}};
    const std::filesystem::path out = options.workFolder / "description.json";
    writeJson(out, Json::object());
    const hostkit::ChildResult child =
        hostkit::runProgram(hostkit::PluginLibrary::programPath(),
                            childArguments(options, out, subject.path), subject.limit);
    Json written = readJson(out);
    json["problem"] = problemOf(child, written, subject.limit);
    json["errorOutput"] = child.errors;
    if (offers.is_null()) {
        offers = member(written, "offers");
    }
    for (const char* part : {"facts", "sheet", "waveforms", "leftUneven"}) {
        json[part] = member(written, part);
    }
    return json;
}

}  // namespace

FileDescriptions describeFiles(const RunOptions& options) {
    FileDescriptions descriptions{nullptr, Json::array()};
    for (const Subject& subject : subjectsOf(options)) {
        descriptions.files.push_back(describe(options, subject, descriptions.offers));
    }
    return descriptions;
}

void describeTo(const std::filesystem::path& out, const std::filesystem::path& file,
                const std::filesystem::path& plugin) {
    Editor editor({plugin, "", false});
    Json document = {{"offers", asJson(editor)}};
    writeJson(out, document);
    describeClip(editor, file, [&](const Json& description) {
        document.update(description);
        writeJson(out, document);
    });
    document["leftUneven"] = editor.finish();
    document["isWhole"] = true;
    writeJson(out, document);
}

}  // namespace importhost::validate
