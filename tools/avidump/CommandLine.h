// The command line of avidump.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace avidump {

constexpr int kExitGood = 0;
constexpr int kExitFailed = 1;  ///< a file could not be opened, or its structure is not usable
constexpr int kExitUsage = 2;

struct Command {
    std::vector<std::string> files;  ///< UTF-8
    bool json = false;
    bool chunks = false;
};

struct ParsedCommand {
    std::optional<Command> command;  ///< none when help, the version or a fault has been printed
    int exitCode = kExitGood;
};

/// Takes the arguments as UTF-8, without the program's name. Prints help and faults itself.
ParsedCommand parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace avidump
