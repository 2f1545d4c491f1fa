// The command line of avidump.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace avidump {

constexpr int kExitGood = 0;
constexpr int kExitFailed = 1;  // a file could not be opened, or its structure is unusable
constexpr int kExitUsage = 2;

struct Command {
    std::vector<std::string> files;  // UTF-8
    bool json = false;
    bool chunks = false;
};

struct ParsedCommand {
    std::optional<Command> command;  // empty if help, the version or an error has been printed
    int exitCode = kExitGood;
};

// Parses the UTF-8 arguments after the program's name. Prints help and errors itself.
ParsedCommand parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace avidump
