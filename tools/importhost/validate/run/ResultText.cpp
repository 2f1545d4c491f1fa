#include "importhost/validate/run/ResultText.h"
#include "importhost/validate/run/CheckGroups.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

namespace importhost::validate {

namespace {

constexpr std::size_t kLineWidth = 96;
constexpr std::size_t kCallsShown = 12;

void addLines(std::string& text, std::string_view mark, const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        text.append("         ").append(mark).append(line).append("\n");
    }
}

void addCalls(std::string& text, const std::vector<std::string>& calls) {
    if (calls.empty()) {
        return;
    }
    text += "         The latest calls:\n";
    const std::size_t first = calls.size() - std::min(calls.size(), kCallsShown);
    for (std::size_t i = first; i < calls.size(); ++i) {
        text.append("           ").append(calls[i]).append("\n");
    }
}

std::string wrapped(std::string_view paragraph, const std::string& indent) {
    std::istringstream words{std::string(paragraph)};
    std::string text;
    std::string line;
    for (std::string word; words >> word;) {
        if (!line.empty() && indent.size() + line.size() + 1 + word.size() > kLineWidth) {
            text += indent + line + "\n";
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    return text + indent + line + "\n";
}

std::string countText(const RunResult& run, Verdict verdict, const char* words) {
    const std::size_t count = run.count(verdict);
    return count == 0 ? "" : ", " + std::to_string(count) + " " + words;
}

}  // namespace

std::string asText(const CheckResult& result) {
    char head[160] = {};
    std::snprintf(head, sizeof(head), "%-7s  %-40.*s %6.1f s", std::string(verdictName(result.verdict)).c_str(),
                  static_cast<int>(result.check->id.size()), result.check->id.data(), result.seconds);
    std::string text = std::string(head) + (result.reason.empty() ? "" : "  " + result.reason) + "\n";
    addLines(text, "", result.failures);
    addLines(text, "", result.warnings);
    if (isBad(result.verdict)) {
        addLines(text, "note: ", result.notes);
        if (!result.errorOutput.empty()) {
            text += result.errorOutput + "\n";
        }
        addCalls(text, result.calls);
        text.append("         To repeat it: ").append(result.repeat).append("\n");
    }
    return text;
}

std::string summaryText(const RunResult& run) {
    const std::vector<std::string> notImported = run.notImported();
    std::string text = notImportedText(notImported) + (notImported.empty() ? "" : "\n");
    text += std::to_string(run.checks.size()) + (run.checks.size() == 1 ? " check: " : " checks: ") +
                       std::to_string(run.count(Verdict::Pass)) + " passed" +
                       countText(run, Verdict::Warn, "with a warning") + countText(run, Verdict::Skip, "skipped") +
                       countText(run, Verdict::Fail, "FAILED") + countText(run, Verdict::Crash, "CRASHED") +
                       countText(run, Verdict::Timeout, "TOOK TOO LONG") + ".\n";
    for (const CheckResult& result : run.checks) {
        if (isBad(result.verdict)) {
            text.append("  ").append(verdictName(result.verdict)).append("  ").append(result.repeat).append("\n");
        }
    }
    return text;
}

std::string listText(const std::vector<const Check*>& checks) {
    std::string text;
    std::string_view group;
    for (const Check* check : checks) {
        if (groupOf(*check) != group) {
            group = groupOf(*check);
            text.append(group).append(":\n");
        }
        text.append("  ").append(check->id).append("  (level ").append(std::to_string(check->level)).append(")\n");
        text += wrapped(check->description, "      ");
    }
    return text;
}

std::string explainText(const Check& check) {
    return std::string(check.id) + " (level " + std::to_string(check.level) + ")\n" + wrapped(check.description, "  ");
}

}  // namespace importhost::validate
