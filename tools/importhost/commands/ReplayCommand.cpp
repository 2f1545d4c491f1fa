// importhost replay: repeats the calls of a user's log, and shows what differs.
#include "importhost/commands/Command.h"
#include "importhost/replay/ReplayReport.h"

#include "hostkit/system/Text.h"
#include "replay/Replayer.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <fstream>
#include <iostream>

namespace importhost {

namespace {

class ReplayCommand : public EditorCommand {
public:
    void declare(CLI::App& app) override {
        app.add_option("LOG", m_logName, "The user's log")->required()->type_name("");
        app.add_option("FILE", m_fileNames, "The clips of the log; matched by file name")->type_name("");
        app.add_flag("--results-only", m_resultsOnly, "Compare only results, and write no new log");
        app.add_option("--json", m_json, "Also write the report to this JSON file")->type_name("OUT");
        app.footer("\nRepeats every call in the log, in the same order, and marks results and messages that differ.\n"
                   "Arguments missing from the log are assumed, and listed. The plug-in's log is switched on for\n"
                   "the run, to compare its messages.\n"
                   "\nExit codes: 0 nothing differs; 1 something does, or the plug-in did not release something;\n"
                   "2 usage, also if LOG is not a log or none of its files was given; 3 the plug-in cannot be\n"
                   "loaded.\n");
    }

protected:
    void prepare(EditorOptions& options) override {
        for (const std::string& name : m_fileNames) {
            m_files.push_back(hostkit::pathFromUtf8(name));
            std::error_code ignored;
            if (!std::filesystem::is_regular_file(m_files.back(), ignored)) {
                throw UsageError("There is no file '" + name + "'.");
            }
        }
        m_log = read(hostkit::pathFromUtf8(m_logName), m_logName);
        m_fileMap.emplace(m_log, m_files);
        requireAFile();
        options.refusedSuites = replay::refusedSuitesOf(m_log);
        options.starts = false;             // the log has the start
        options.log = options.log || !m_resultsOnly;
    }

    ExitCode runWith(Editor& editor) override {
        ReplayReport report{hostkit::pathFromUtf8(m_logName), m_log, *m_fileMap, playedText(editor), {}, false, {}};
        std::cout << headText(report) << std::flush;
        const bool startedByItself = makeCalls(editor, report);
        const std::vector<std::string>& problems = editor.finish();
        if (!m_resultsOnly) {
            compareMessages(editor, startedByItself, report);
        }
        std::cout << tailText(report);
        if (!m_json.empty()) {
            writeJson(report, problems);
        }
        return report.totals().anyDifference() ? kFailed : kGood;
    }

private:
    static replay::RecordedLog read(const std::filesystem::path& path, const std::string& name) {
        std::ifstream in(path, std::ios::binary);
        std::error_code ignored;
        if (!in || !std::filesystem::is_regular_file(path, ignored)) {
            throw UsageError("The log '" + name + "' cannot be read.");
        }
        try {
            return replay::readLog(in);
        } catch (const replay::NotALog& error) {
            throw UsageError("'" + name + "' is not a log of the plug-in: " + error.what());
        }
    }

    // Without any of the files there would be almost nothing to compare.
    void requireAFile() const {
        const auto& entries = m_fileMap->entries();
        const bool anyGiven = std::any_of(entries.begin(), entries.end(),
                                          [](const replay::MappedFile& entry) { return entry.file.has_value(); });
        if (!entries.empty() && !anyGiven) {
            throw UsageError("None of the log's files was given; the first is '" + entries.front().logged + "'.");
        }
    }

    static std::vector<std::string> playedText(Editor& editor) {
        const hostkit::HostProfile& profile = editor.host().profile();
        std::vector<std::string> played = {
            "Host " + profile.name + ": " + profile.description + ".",
            "Calls are made one after another, on one thread; files are opened for reading; frames are given back "
            "at once.",
        };
        for (const hostkit::SuiteId& suite : profile.refusedSuites) {
            played.push_back("The host refuses the suite '" + suite.name + "'" +
                             (suite.version == hostkit::kEveryVersion ? "."
                                                                      : " version " + std::to_string(suite.version) +
                                                                            "."));
        }
        return played;
    }

    // Returns true if the plug-in was started although the log does not.
    bool makeCalls(Editor& editor, ReplayReport& report) const {
        replay::Replayer replayer(editor.session(), *m_fileMap, m_log);
        for (const replay::LoggedCall& logged : m_log.calls) {
            replay::Step step = replayer.step(logged);
            ReplayedCall call{report.calls.size() + 1, &logged, step.text, step.assumed, step.skipped, 0, {}};
            std::cout << callText(call) << std::flush;      // before the call, which may crash
            if (!call.skipped) {
                call.result = step.run();
            }
            std::cout << resultText(call) << "\n";
            report.calls.push_back(std::move(call));
        }
        report.remarks = replayer.finish();
        if (replayer.startedByItself()) {
            report.remarks.insert(report.remarks.begin(), "No start in the log: the plug-in was started.");
        }
        return replayer.startedByItself();
    }

    // The new log has exactly the calls made here, in the same order.
    void compareMessages(const Editor& editor, bool startedByItself, ReplayReport& report) const {
        const auto files = editor.logFiles();
        if (files.size() != 1) {
            report.remarks.push_back(
                files.empty() ? "The plug-in wrote no log: messages were not compared."
                              : "Other programs wrote logs meanwhile: messages were not compared.");
            return;
        }
        const replay::RecordedLog now = read(files.front(), hostkit::toUtf8(files.front()));
        std::size_t next = startedByItself ? 1 : 0;
        for (ReplayedCall& call : report.calls) {
            if (call.skipped) {
                continue;
            }
            if (next >= now.calls.size() || now.calls[next].name != call.logged->name) {
                report.remarks.push_back("The new log does not tell of call " + std::to_string(call.number) +
                                         ": messages were compared up to there.");
                break;
            }
            if (cameToItsEnd(*call.logged)) {
                call.messages = replay::compareMessages(*call.logged, now.calls[next], m_log.isComplete);
            }
            ++next;
        }
        report.comparesMessages = true;
    }

    // True if all messages of the call itself are in the log.
    bool cameToItsEnd(const replay::LoggedCall& call) const {
        return call.result || (call.hasNoResult() && (m_log.isComplete || &call != &m_log.calls.back()));
    }

    void writeJson(const ReplayReport& report, const std::vector<std::string>& problems) const {
        nlohmann::ordered_json json = asJson(report);
        json["problems"] = problems;
        std::ofstream out(hostkit::pathFromUtf8(m_json), std::ios::binary);
        out << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
        out.close();
        if (!out) {
            throw std::runtime_error("The report cannot be written to '" + m_json + "'.");
        }
    }

    std::string m_logName;
    std::vector<std::string> m_fileNames;
    bool m_resultsOnly = false;
    std::string m_json;
    std::vector<std::filesystem::path> m_files;
    replay::RecordedLog m_log;
    std::optional<replay::FileMap> m_fileMap;
};

}  // namespace

std::unique_ptr<Command> makeReplayCommand() { return std::make_unique<ReplayCommand>(); }

}  // namespace importhost
