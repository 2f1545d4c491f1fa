// What came of a check, and of a whole run.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace importhost::validate {

enum class Verdict { Pass, Warn, Skip, Fail, Crash, Timeout };

std::string_view verdictName(Verdict verdict);      // "pass"
inline bool isBad(Verdict verdict) { return verdict >= Verdict::Fail; }

struct CheckResult {
    const Check* check = nullptr;
    Verdict verdict = Verdict::Pass;
    std::string reason;                     // of a skip, crash or timeout; else empty
    std::vector<std::string> failures;
    std::vector<std::string> warnings;
    std::vector<std::string> notes;
    std::vector<std::string> notImported;   // names of files of the user's that the plug-in does not import
    std::vector<std::string> calls;         // the latest between host and plug-in, up to the first failure or the end
    std::string errorOutput;                // what the process wrote to standard error, its end
    std::string repeat;                     // the command that repeats this check alone
    double seconds = 0.0;
};

// How the process of a check ended.
struct ProcessEnd {
    int exitCode = 0;
    std::optional<std::chrono::seconds> limit = std::nullopt;       // it was ended for running so long
    std::string errorOutput = {};
    double seconds = 0.0;
};

// The verdict on what a check told and how its process ended.
CheckResult resultOf(const Check& check, const std::vector<Event>& events, const ProcessEnd& end);

// "access violation (0xC0000005)", "segmentation fault (signal 11)", "exit code 3".
std::string exitText(int exitCode);

struct RunResult {
    std::vector<CheckResult> checks;

    std::size_t count(Verdict verdict) const;
    std::vector<std::string> notImported() const;       // of all checks
    bool isGood() const;                    // nothing failed, crashed or took too long
};

// "The plug-in does not import 'text.avi'."; of many files some by name. Empty for none.
std::string notImportedText(const std::vector<std::string>& names);

}  // namespace importhost::validate
