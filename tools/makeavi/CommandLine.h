// makeavi's command line.
#pragma once

#include "aviwriter/Sample.h"

#include <optional>
#include <string>
#include <vector>

namespace makeavi {

constexpr int kExitGood = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

struct Command {
    aviwriter::SampleOptions options;
    std::string output;                 // UTF-8 path
};

struct ParsedCommand {
    std::optional<Command> command;     // empty if there is nothing to do but exit
    int exitCode = kExitGood;           // in that case: after --help, --version or an invalid command line
};

// Prints help to standard output and errors to standard error.
ParsedCommand parseCommandLine(std::vector<std::string> arguments);

}  // namespace makeavi
