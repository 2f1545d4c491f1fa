// The command line of avirepair.
#pragma once

#include "avirepair/Plan.h"

#include <optional>
#include <string>
#include <vector>

namespace avirepair {

struct Command {
    std::string input;              // UTF-8, as all paths here
    std::string output;
    std::string like;
    bool json = false;
    bool dryRun = false;
    bool list = false;
    bool force = false;
    Options options;
};

struct ParsedCommand {
    std::optional<Command> command;     // none when help, version or a fault has been printed
    int exitCode = 0;
};

// Takes the arguments as UTF-8, without the program's name. Prints help, version and faults itself.
ParsedCommand parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace avirepair
