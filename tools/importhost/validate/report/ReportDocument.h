// All that there is to report of a run as one document: written as JSON for machines, and shown as a page for people.
#pragma once

#include "importhost/validate/report/FileDescriptions.h"
#include "importhost/validate/report/RunTime.h"
#include "importhost/validate/run/Result.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace importhost::validate {

// Raised when a member changes its meaning or goes; new members may come without it.
inline constexpr int kReportSchema = 1;

struct RunFacts {
    RunOptions options;
    std::string pattern;                // of --only; empty for all checks
    std::string profile;                // the host that was played where a check did not want another
    std::string command;                // repeats the run
    RunClock::time_point started;
    double seconds = 0.0;
};

nlohmann::ordered_json reportDocument(const RunFacts& facts, const RunResult& result,
                                      const FileDescriptions& descriptions);

// The document's text without its pictures, of which it would nearly consist; the numbers that waveforms are drawn from
// stay. Text that is no UTF-8 has U+FFFD for what is wrong in it.
std::string documentText(const nlohmann::ordered_json& document);

}  // namespace importhost::validate
