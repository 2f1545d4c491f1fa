#include "avirepair/CommandLine.h"

#include "avirepair/Report.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace avirepair {

ParsedCommand parseCommandLine(const std::vector<std::string>& arguments) {
    Command command;
    CLI::App app("Copies what a broken AVI file still holds into a new one, with new indexes. Nothing is decoded, and "
                 "the broken file is never changed.", "avirepair");
    app.allow_windows_style_options(false);   // a path may begin with a slash
    app.set_version_flag("--version", "avirepair " AVIREPAIR_VERSION);
    app.add_option("BROKEN", command.input, "The AVI file to repair")->required();
    app.add_option("-o,--output", command.output, "The file to write");
    app.add_option("--like", command.like, "Take the headers from this clip of the same camera or program");
    app.add_flag("--close-gaps", command.options.closesGaps,
                 "Close up where something is lost, out of sync if need be");
    app.add_flag("--all", command.options.takesAll, "Take every chunk, even what may belong to an older file");
    app.add_flag("--dry-run", command.dryRun, "Report only; write nothing");
    app.add_flag("--list", command.list, "Print every chunk that was found; write nothing");
    app.add_flag("--json", command.json, "Report as JSON");
    app.add_flag("--force", command.force, "Overwrite the output if it exists");
    app.footer("Exit codes: 0 repaired, 1 nothing could be saved or a file failed, 2 wrong usage, 3 repaired with "
               "losses.");
    try {
        // CLI11 takes a list from its end.
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        app.parse(std::move(reversed));
        if (command.output.empty() && !command.dryRun && !command.list) {
            throw CLI::RequiredError("-o, --dry-run or --list");
        }
    } catch (const CLI::ParseError& error) {
        return {std::nullopt, app.exit(error) == 0 ? 0 : kExitUsage};
    }
    return {command, 0};
}

}  // namespace avirepair
