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
    std::optional<Command> command;     // empty when there is nothing to do but to end
    int exitCode = kExitGood;           // for that case: after --help or --version, or after a line that makes no sense
};

// Prints help to standard output and what is wrong with the line to standard error.
ParsedCommand parseCommandLine(std::vector<std::string> arguments);

}  // namespace makeavi
