// Runs checks, each in a child process of its own, several at a time.
#pragma once

#include "importhost/validate/run/Result.h"

#include <functional>
#include <vector>

namespace importhost::validate {

struct Isolation {
    bool inProcess = false;         // no children: for a debugger. A crash ends the program
    unsigned jobs = 1;
};

// `told` is called with each result in the order of `checks`, as soon as all before it are there.
RunResult runChecks(const RunOptions& options, const std::vector<const Check*>& checks, const Isolation& isolation,
                    const std::function<void(const CheckResult&)>& told);

// The arguments of this program that run just this check again, and the same as a line to paste.
std::vector<std::string> repeatArguments(const RunOptions& options, const Check& check);
std::string repeatCommand(const RunOptions& options, const Check& check);

// The same for a whole run; an empty pattern fits all checks.
std::string runCommand(const RunOptions& options, const std::string& pattern);

}  // namespace importhost::validate
