// Results of checks for people, on a terminal.
#pragma once

#include "importhost/validate/run/Result.h"

#include <string>

namespace importhost::validate {

// A line, and below it what there is to say.
std::string asText(const CheckResult& result);

// Which of the user's files are not imported; "42 checks: 40 passed, 2 skipped."; and what failed, once more by name.
std::string summaryText(const RunResult& run);

// These checks by group with their levels and descriptions; and one check's description.
std::string listText(const std::vector<const Check*>& checks);
std::string explainText(const Check& check);

}  // namespace importhost::validate
