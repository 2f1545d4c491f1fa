#include "importhost/validate/run/Result.h"

#include <algorithm>

namespace importhost::validate {

namespace {

// The end of a long text: sanitizers and runtimes say last what is worth reading.
constexpr std::size_t kMostErrorOutput = 6000;

constexpr std::size_t kMostNames = 5;

std::string endOf(const std::string& text) {
    return text.size() <= kMostErrorOutput ? text : "..." + text.substr(text.size() - kMostErrorOutput);
}

std::string lastStep(const std::vector<Event>& events) {
    const auto last = std::find_if(events.rbegin(), events.rend(),
                                   [](const Event& event) { return event.kind == EventKind::Step; });
    return last == events.rend() || last->text.empty() ? "" : " (at " + last->text + ")";
}

void sortInto(CheckResult& result, const std::vector<Event>& events) {
    for (const Event& event : events) {
        switch (event.kind) {
            case EventKind::Note: result.notes.push_back(event.text); break;
            case EventKind::Warning: result.warnings.push_back(event.text); break;
            case EventKind::Failure: result.failures.push_back(event.text); break;
            case EventKind::Call: result.calls.push_back(event.text); break;
            case EventKind::NotImported: result.notImported.push_back(event.text); break;
            case EventKind::Skip: result.reason = event.text; break;
            default: break;
        }
    }
}

bool has(const std::vector<Event>& events, EventKind kind) {
    return std::any_of(events.begin(), events.end(), [kind](const Event& event) { return event.kind == kind; });
}

}  // namespace

std::string_view verdictName(Verdict verdict) {
    switch (verdict) {
        case Verdict::Pass: return "pass";
        case Verdict::Warn: return "warn";
        case Verdict::Skip: return "skip";
        case Verdict::Fail: return "FAIL";
        case Verdict::Crash: return "CRASH";
        case Verdict::Timeout: return "TIMEOUT";
    }
    return "?";
}

CheckResult resultOf(const Check& check, const std::vector<Event>& events, const ProcessEnd& end) {
    CheckResult result;
    result.check = &check;
    result.seconds = end.seconds;
    result.errorOutput = endOf(end.errorOutput);
    sortInto(result, events);
    const bool ended = has(events, EventKind::End);
    if (end.limit) {
        result.verdict = Verdict::Timeout;
        result.reason = "ended after " + std::to_string(end.limit->count()) + " seconds" + lastStep(events);
    } else if (!ended) {
        result.verdict = Verdict::Crash;
        result.reason = exitText(end.exitCode) + lastStep(events);
    } else if (end.exitCode != 0) {
        // The check was over: the plug-in's remains or a sanitizer ended the process.
        result.verdict = Verdict::Crash;
        result.reason = "after the check: " + exitText(end.exitCode);
    } else if (!result.failures.empty()) {
        result.verdict = Verdict::Fail;
    } else if (has(events, EventKind::Skip)) {
        result.verdict = Verdict::Skip;
    } else if (!result.warnings.empty()) {
        result.verdict = Verdict::Warn;
    }
    return result;
}

std::size_t RunResult::count(Verdict verdict) const {
    return static_cast<std::size_t>(std::count_if(
        checks.begin(), checks.end(), [verdict](const CheckResult& result) { return result.verdict == verdict; }));
}

bool RunResult::isGood() const {
    return std::none_of(checks.begin(), checks.end(),
                        [](const CheckResult& result) { return isBad(result.verdict); });
}

std::vector<std::string> RunResult::notImported() const {
    std::vector<std::string> names;
    for (const CheckResult& result : checks) {
        names.insert(names.end(), result.notImported.begin(), result.notImported.end());
    }
    return names;
}

std::string notImportedText(const std::vector<std::string>& names) {
    if (names.empty()) {
        return {};
    }
    std::string text = "The plug-in does not import ";
    text.append(names.size() == 1 ? "" : std::to_string(names.size()) + " files: ");
    for (std::size_t i = 0; i < std::min(names.size(), kMostNames); ++i) {
        text.append(i == 0 ? "'" : ", '").append(names[i]).append("'");
    }
    return text.append(names.size() > kMostNames ? " and others." : ".");
}

}  // namespace importhost::validate
