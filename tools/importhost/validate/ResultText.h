// Results of checks for people, on a terminal.
#pragma once

#include "importhost/validate/Result.h"

#include <string>

namespace importhost::validate {

// A line, and below it what there is to say.
std::string asText(const CheckResult& result);

// "42 checks: 40 passed, 2 skipped." and what failed, once more by name.
std::string summaryText(const RunResult& run);

// All checks by group with their levels; and one check's description.
std::string listText();
std::string explainText(const Check& check);

}  // namespace importhost::validate
