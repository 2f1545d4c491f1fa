#include "avidump/CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace avidump {

ParsedCommand parseCommandLine(const std::vector<std::string>& arguments) {
    Command command;
    CLI::App app("Shows the structure of AVI files as the importer's parser sees it, for any codec.", "avidump");
    app.allow_windows_style_options(false);   // a path may begin with a slash
    app.set_version_flag("--version", "avidump " AVIDUMP_VERSION);
    app.add_option("FILE", command.files, "AVI files")->required();
    app.add_flag("--json", command.json, "Write one JSON array with an object per file");
    app.add_flag("--chunks", command.chunks, "List every chunk of every stream");
    app.footer("Exit codes: 0 success, 1 a file could not be read or is not a usable AVI file, 2 usage.");
    try {
        // CLI11 expects the list in reverse.
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        app.parse(std::move(reversed));
    } catch (const CLI::ParseError& error) {
        return {std::nullopt, app.exit(error) == 0 ? kExitGood : kExitUsage};
    }
    return {command, kExitGood};
}

}  // namespace avidump
