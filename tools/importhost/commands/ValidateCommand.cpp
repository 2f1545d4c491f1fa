// importhost validate: checks whether a plug-in is correct.
#include "importhost/commands/Command.h"
#include "importhost/console/OutputTarget.h"
#include "importhost/console/System.h"
#include "importhost/validate/framework/Places.h"
#include "importhost/validate/framework/WorkFolder.h"
#include "importhost/validate/page/ReportPage.h"
#include "importhost/validate/report/FileDescriptions.h"
#include "importhost/validate/report/ReportDocument.h"
#include "importhost/validate/run/ResultText.h"
#include "importhost/validate/run/Runner.h"

#include "hostkit/plugin/PluginLog.h"
#include "hostkit/system/Interrupt.h"
#include "hostkit/system/Text.h"
#include "importhost/validate/run/CheckGroups.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>
#include <random>
#include <thread>

namespace importhost {

namespace {

using namespace validate;

constexpr unsigned kMostJobs = 4;

class ValidateCommand : public Command {
public:
    void declare(CLI::App& app) override {
        app.add_option("FILE", m_files, "Files to check the plug-in with (default: the program's own samples)")
            ->type_name("");
        m_levelOption =
            app.add_option("--level", m_level, "How much to check, from 1 (a few seconds) to 10 (everything)")
                ->type_name("N")
                ->check(CLI::Range(kLowestLevel, kHighestLevel).description(""))
                ->capture_default_str();
        app.add_option("--only", m_pattern, "Only checks whose id matches; * matches any text")->type_name("PATTERN");
        app.add_option("--seed", m_seed, "Random seed (default: chosen and printed)")
            ->type_name("N")
            ->check(CLI::NonNegativeNumber.description(""));
        app.add_option("--jobs", m_jobs, "Number of parallel checks (default: number of CPUs, at most 4)")
            ->type_name("N")
            ->check(CLI::Range(1U, 64U).description(""));
        app.add_option("--time-limit", m_timeLimit, "Seconds that a check may take (default: its own limit)")
            ->type_name("S")
            ->check(CLI::Range(1, 86400).description(""));
        app.add_option("--report", m_report, "Write a report with pictures and evidence to this HTML file")
            ->type_name("HTML");
        app.add_option("--json", m_json, "Write the report to this JSON file")->type_name("JSON");
        app.add_flag("--in-process", m_inProcess, "Run checks without processes of their own, for a debugger");
        app.add_flag("--list", m_list, "List the checks, or those of --level and --only, and exit");
        app.add_option("--explain", m_explain, "Explain one check and exit")->type_name("ID");
        app.add_option("--child-of", m_childOf, "")->group("");      // both used by the program itself
        app.add_option("--describe-to", m_describeTo, "")->group("");
    }

    ExitCode run(const EditorOptions& editorOptions) override {
        if (m_list) {
            // Without --level all of them, not those of the default level.
            std::cout << listText(selectedChecks(m_levelOption->count() > 0 ? m_level : kHighestLevel));
            return kGood;
        }
        if (!m_explain.empty()) {
            return explain();
        }
        if (!editorOptions.profile.empty() || editorOptions.log) {
            throw UsageError("--profile and --log cannot be used with validate: each check chooses its own host.");
        }
        if (!m_describeTo.empty()) {
            endWithParent();
            describeTo(hostkit::pathFromUtf8(m_describeTo), hostkit::pathFromUtf8(m_files.at(0)),
                       pluginPathOf(editorOptions));
            return kGood;
        }
        RunOptions options = runOptions(editorOptions);
        return m_childOf.empty() ? runAll(options) : runAsChild(options);
    }

private:
    ExitCode explain() const {
        const Check* check = findCheck(m_explain);
        if (!check) {
            throw UsageError("There is no check '" + m_explain + "'; --list names all.");
        }
        std::cout << explainText(*check);
        return kGood;
    }

    std::vector<const Check*> selectedChecks(int level) const {
        std::vector<const Check*> checks = selectChecks(level, m_pattern);
        if (checks.empty()) {
            throw UsageError("No check was selected: none up to level " + std::to_string(level) + " fits '" +
                             m_pattern + "'.");
        }
        return checks;
    }

    RunOptions runOptions(const EditorOptions& editorOptions) const {
        RunOptions options;
        options.plugin = std::filesystem::absolute(pluginPathOf(editorOptions));
        for (const std::string& file : m_files) {
            options.files.push_back(std::filesystem::absolute(hostkit::pathFromUtf8(file)));
        }
        options.level = m_level;
        options.seed = m_seed.value_or(std::random_device{}());
        if (m_timeLimit) {
            options.timeLimit = std::chrono::seconds(*m_timeLimit);
        }
        return options;
    }

    // Runs one check, for the program that started this one.
    ExitCode runAsChild(RunOptions& options) const {
        options.workFolder = hostkit::pathFromUtf8(m_childOf);
        const Check* check = findCheck(m_pattern);
        if (!check) {
            throw UsageError("There is no check '" + m_pattern + "'.");
        }
        endWithParent();
        const std::filesystem::path folder = checkFolder(options.workFolder, check->id);
        EventFile events(eventFile(folder));
        runCheck(options, *check, folder, events);
        return kGood;
    }

    ExitCode runAll(RunOptions& options) const {
        const std::vector<const Check*> checks = selectedChecks(m_level);
        expectFiles(options);
        std::vector<std::filesystem::path> inputs = options.files;
        inputs.push_back(options.plugin);
        OutputTarget page(m_report, "<!doctype html", inputs);
        if (page.isWanted()) {
            inputs.push_back(hostkit::pathFromUtf8(m_report));
        }
        OutputTarget json(m_json, "{", inputs);
        hostkit::catchInterrupts();
        // Logs of hundreds of short runs are useless; and a check that is killed cannot restore the switch.
        const hostkit::LogSwitch noLogs(false);
        const auto started = RunClock::now();
        const WorkFolder workFolder;
        options.workFolder = workFolder.path();
        std::filesystem::create_directories(samplesFolder(options.workFolder));
        if (options.files.empty()) {
            writeSamples(samplesFolder(options.workFolder), options.level);
        }
        std::cout << "Checking " << hostkit::toUtf8(options.plugin) << " at level " << m_level << ", seed "
                  << options.seed << ".\n";
        const RunResult result = runChecks(options, checks, {m_inProcess, jobs()}, [](const CheckResult& one) {
            std::cout << asText(one) << std::flush;
        });
        if (hostkit::wasInterrupted()) {
            throw hostkit::Interrupted();
        }
        std::cout << summaryText(result);
        if (page.isWanted() || json.isWanted()) {
            const std::chrono::duration<double> seconds = RunClock::now() - started;
            const RunFacts facts{options, m_pattern, hostkit::hostProfiles().front().name,
                                 runCommand(options, m_pattern), started, seconds.count()};
            const nlohmann::ordered_json document = reportDocument(facts, result, describeFiles(facts.options));
            page.write(page.isWanted() ? reportPage(document) : "");
            json.write(json.isWanted() ? documentText(document) : "");
        }
        return result.isGood() ? kGood : kFailed;
    }

    static void expectFiles(const RunOptions& options) {
        if (!std::filesystem::exists(options.plugin)) {
            throw CannotLoad("There is no plug-in '" + hostkit::toUtf8(options.plugin) + "'.");
        }
        for (const std::filesystem::path& file : options.files) {
            if (!std::filesystem::exists(file)) {
                throw UsageError("There is no file '" + hostkit::toUtf8(file) + "'.");
            }
        }
    }

    unsigned jobs() const { return m_jobs.value_or(std::clamp(std::thread::hardware_concurrency(), 1U, kMostJobs)); }

    std::vector<std::string> m_files;
    int m_level = kUsualLevel;
    const CLI::Option* m_levelOption = nullptr;
    std::string m_pattern;
    std::optional<std::uint64_t> m_seed;
    std::optional<unsigned> m_jobs;
    std::optional<int> m_timeLimit;
    bool m_inProcess = false;
    bool m_list = false;
    std::string m_explain;
    std::string m_report;
    std::string m_json;
    std::string m_childOf;
    std::string m_describeTo;
};

}  // namespace

std::unique_ptr<Command> makeValidateCommand() { return std::make_unique<ValidateCommand>(); }

}  // namespace importhost
