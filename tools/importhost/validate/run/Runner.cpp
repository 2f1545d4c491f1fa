#include "importhost/validate/run/Runner.h"

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/plugin/PluginLog.h"
#include "hostkit/system/ChildProcess.h"
#include "hostkit/system/Interrupt.h"
#include "hostkit/system/Text.h"
#include "importhost/console/System.h"
#include "importhost/validate/framework/Places.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

namespace importhost::validate {

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

CheckResult runInChild(const RunOptions& options, const Check& check, const std::filesystem::path& folder) {
    std::vector<std::string> arguments = repeatArguments(options, check);
    arguments.insert(arguments.end(), {"--child-of", hostkit::toUtf8(options.workFolder)});
    const std::chrono::seconds limit = timeLimitOf(options, check);
    const auto start = Clock::now();
    const hostkit::ChildResult child =
        hostkit::runProgram(hostkit::PluginLibrary::programPath(), arguments, limit);
    return resultOf(check, readEvents(eventFile(folder)),
                    {child.exitCode, child.timedOut ? std::optional(limit) : std::nullopt, child.errors,
                     secondsSince(start)});
}

CheckResult runHere(const RunOptions& options, const Check& check, const std::filesystem::path& folder) {
    EventList events;
    const auto start = Clock::now();
    runCheck(options, check, folder, events);
    return resultOf(check, events.events(), {0, std::nullopt, "", secondsSince(start)});
}

CheckResult runIn(const RunOptions& options, const Check& check, const std::filesystem::path& folder, bool inProcess) {
    try {
        std::filesystem::create_directories(folder);
        return inProcess ? runHere(options, check, folder) : runInChild(options, check, folder);
    } catch (const std::exception& error) {
        CheckResult result;
        result.check = &check;
        result.verdict = Verdict::Crash;
        result.reason = std::string("the check could not be run: ") + error.what();
        return result;
    }
}

CheckResult runOne(const RunOptions& options, const Check& check, bool inProcess) {
    const std::filesystem::path folder = checkFolder(options.workFolder, check.id);
    CheckResult result = runIn(options, check, folder, inProcess);
    result.repeat = repeatCommand(options, check);
    if (isBad(result.verdict) && result.calls.empty()) {
        result.calls = readCallTrace(traceFile(folder));
    }
    return result;
}

// Results as they come in, told in order.
class Results {
public:
    Results(std::size_t count, const std::function<void(const CheckResult&)>& told) : m_results(count), m_told(told) {}

    void put(std::size_t index, CheckResult result) {
        const std::lock_guard lock(m_mutex);
        m_results[index] = std::move(result);
        for (; m_next < m_results.size() && m_results[m_next]; ++m_next) {
            m_told(*m_results[m_next]);
        }
    }

    RunResult take() {
        RunResult run;
        for (std::optional<CheckResult>& result : m_results) {
            if (result) {       // else the run was interrupted before
                run.checks.push_back(std::move(*result));
            }
        }
        return run;
    }

private:
    std::mutex m_mutex;
    std::vector<std::optional<CheckResult>> m_results;
    std::size_t m_next = 0;
    const std::function<void(const CheckResult&)>& m_told;
};

std::vector<std::size_t> indexesOf(const std::vector<const Check*>& checks, Company company) {
    std::vector<std::size_t> indexes;
    for (std::size_t index = 0; index < checks.size(); ++index) {
        if (checks[index]->company == company) {
            indexes.push_back(index);
        }
    }
    return indexes;
}

std::vector<std::string> argumentsOf(const RunOptions& options, std::string_view pattern, int level) {
    std::vector<std::string> words = {"--plugin", hostkit::toUtf8(options.plugin), "validate"};
    if (!pattern.empty()) {
        words.insert(words.end(), {"--only", std::string(pattern)});
    }
    words.insert(words.end(), {"--level", std::to_string(level), "--seed", std::to_string(options.seed)});
    if (options.timeLimit) {
        words.insert(words.end(), {"--time-limit", std::to_string(options.timeLimit->count())});
    }
    for (const std::filesystem::path& file : options.files) {
        words.push_back(hostkit::toUtf8(file));
    }
    return words;
}

std::string commandOf(const std::vector<std::string>& arguments) {
    std::string line = shellWord(hostkit::toUtf8(hostkit::PluginLibrary::programPath()));
    for (const std::string& word : arguments) {
        line += " " + shellWord(word);
    }
    return line;
}

}  // namespace

RunResult runChecks(const RunOptions& options, const std::vector<const Check*>& checks, const Isolation& isolation,
                    const std::function<void(const CheckResult&)>& told) {
    Results results(checks.size(), told);
    const auto runAt = [&](std::size_t index) {
        if (hostkit::wasInterrupted()) {
            return;
        }
        CheckResult result = runOne(options, *checks[index], isolation.inProcess);
        if (!hostkit::wasInterrupted()) {       // else it says nothing of the plug-in
            results.put(index, std::move(result));
        }
    };
    for (const std::size_t index : indexesOf(checks, Company::Alone)) {
        const hostkit::LogSwitch off(false);        // puts back what a check that was ended left switched on
        runAt(index);
    }
    const std::vector<std::size_t> shared = indexesOf(checks, Company::Shared);
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t turn = next++; turn < shared.size(); turn = next++) {
            runAt(shared[turn]);
        }
    };
    std::vector<std::thread> helpers;
    for (unsigned job = 1; job < isolation.jobs && !isolation.inProcess; ++job) {
        helpers.emplace_back(work);
    }
    work();
    for (std::thread& helper : helpers) {
        helper.join();
    }
    return results.take();
}

std::vector<std::string> repeatArguments(const RunOptions& options, const Check& check) {
    return argumentsOf(options, check.id, std::max(options.level, check.level));
}

std::string repeatCommand(const RunOptions& options, const Check& check) {
    return commandOf(repeatArguments(options, check));
}

std::string runCommand(const RunOptions& options, const std::string& pattern) {
    return commandOf(argumentsOf(options, pattern, options.level));
}

}  // namespace importhost::validate
