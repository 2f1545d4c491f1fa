// The plug-in's own log from load to unload.
#include "importhost/validate/checks/library/LibraryParts.h"
#include "importhost/validate/checks/stage/OwnLogs.h"
#include "importhost/validate/checks/stage/PlayedPlugin.h"

#include "hostkit/system/Text.h"

#include <algorithm>
#include <regex>

namespace importhost::validate {

namespace {

using Lines = std::vector<std::string>;

const Lines kFirstLines = {"Log opened", "Application: ...", "----------------------", "[imInit] (0)"};
const Lines kLastLines = {"----------------------", "[imShutdown] (1)",
                          "Releasing suite: r: 0, v: 3, n: 'Premiere Error Suite'", "    [imNoErr] (0)",
                          "Module destroy", "Log closed"};

std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text.append(text.empty() ? "" : " | ").append(line);
    }
    return text;
}

std::string withoutProgram(const std::string& line) { return namesThisProgram(line) ? "Application: ..." : line; }

Lines messagesOf(const Lines& lines) {
    Lines messages;
    for (const std::string& line : lines) {
        messages.push_back(withoutProgram(std::string(hostkit::withoutLogPrefix(line))));
    }
    return messages;
}

Lines firstOf(const Lines& lines, std::size_t count) {
    return {lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(std::min(count, lines.size()))};
}

Lines lastOf(const Lines& lines, std::size_t count) {
    return {lines.end() - static_cast<std::ptrdiff_t>(std::min(count, lines.size())), lines.end()};
}

void expectPrefixes(CheckRun& run, const Lines& lines) {
    const std::regex whole(R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\] \[\d+\] .*)");
    for (const std::string& line : lines) {
        if (!run.expect(std::regex_match(line, whole), "the line '" + line + "' does not begin with time and thread")) {
            return;
        }
    }
}

void expectLines(CheckRun& run, const Lines& lines) {
    expectPrefixes(run, lines);
    const Lines messages = messagesOf(lines);
    run.expectEqual("the first lines of the log", joined(firstOf(messages, kFirstLines.size())), joined(kFirstLines));
    run.expectEqual("the last lines of the log", joined(lastOf(messages, kLastLines.size())), joined(kLastLines));
    run.expectEqual("lines 'Module init', written before the switch can be read",
                    std::count(messages.begin(), messages.end(), "Module init"), 0);
}

}  // namespace

void logStaysOff(CheckRun& run) {
    const hostkit::LogSwitch off(false);
    const hostkit::PluginLog log;
    PlayedPlugin(run).finish();
    const std::vector<std::filesystem::path> files = ownLogs(log);
    for (const std::filesystem::path& file : files) {
        run.fail("the log '" + hostkit::toUtf8(file.filename()) + "' was written although the switch is off");
    }
    removeFiles(files);
}

void logOfLoadAndUnload(CheckRun& run) {
    const hostkit::LogSwitch on;
    const std::regex name(R"(quorvane_pr_importer_\d{8}_\d{6}_\d{2,}\.log)");
    for (int load = 1; load <= 2; ++load) {
        run.step("load " + std::to_string(load));
        const hostkit::PluginLog log;
        PlayedPlugin(run).finish();
        const std::vector<std::filesystem::path> files = ownLogs(log);
        if (run.expectEqual("new log files", files.size(), std::size_t{1})) {
            const std::string found = hostkit::toUtf8(files.front().filename());
            run.expect(std::regex_match(found, name), "the log is named '" + found + "'");
            expectLines(run, hostkit::readLogLines(files.front()));
        }
        removeFiles(files);
    }
}

}  // namespace importhost::validate
