#include "importhost/commands/Command.h"

#include "hostkit/system/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace importhost {

namespace {

struct CommandRow {
    const char* name;
    const char* purpose;
    std::unique_ptr<Command> (*make)();
};

constexpr CommandRow kCommands[] = {
    {"info", "Show what the plug-in says about files", makeInfoCommand},
    {"frames", "Write frames as pictures, raw bytes or checksums", makeFramesCommand},
    {"sheet", "Write a contact sheet of a file's frames", makeSheetCommand},
    {"audio", "Write a stream's sound as a WAV file", makeAudioCommand},
    {"bench", "Measure how fast the plug-in reads files", makeBenchCommand},
    {"validate", "Check the plug-in against everything that a host may do", makeValidateCommand},
    {"replay", "Repeat the calls of a user's log and compare", makeReplayCommand},
    {"doctor", "Find out why the host does not see the plug-in", makeDoctorCommand},
};

constexpr char kPurpose[] =
    "importhost is a command-line host for an Adobe Premiere Pro importer: it loads the plug-in,\n"
    "opens clips and shows the results, without the editor.\n";

constexpr char kFooter[] =
    "\nFirst steps:\n"
    "  importhost info clip.avi                         what is in the clip\n"
    "  importhost sheet clip.avi -o sheet.png           see it at a glance\n"
    "  importhost frames clip.avi --range 10-19         ten frames as PNG files\n"
    "  importhost frames clip.avi --as checksum         one line per frame, to compare runs\n"
    "  importhost frames clip.avi --as checksum --async 8    the same, asynchronously\n"
    "  importhost audio clip.avi -o sound.wav           hear it\n"
    "  importhost info clip.avi --log                   with the plug-in's own log\n"
    "  importhost bench clip.avi                        how fast is it?\n"
    "  importhost validate                              is the plug-in correct?\n"
    "  importhost replay user.log clip.avi              repeat the calls of a user's log\n"
    "  importhost doctor                                why does the host not see the plug-in?\n"
    "\n'importhost COMMAND --help' explains a command.\n"
    "\nExit codes: 0 success; 1 the plug-in or a file failed, or the plug-in did not release something\n"
    "(suites, frames, memory, asynchronous importers) or wrote out of bounds; 2 usage; 3 the plug-in\n"
    "cannot be loaded.\n";

std::string profileHelp() {
    std::string help = "The host to simulate, one of:";
    for (const hostkit::HostProfile& profile : hostkit::hostProfiles()) {
        help.append("\n  ").append(profile.name).append(": ").append(profile.description);
    }
    return help;
}

std::vector<std::string> profileNames() {
    std::vector<std::string> names;
    for (const hostkit::HostProfile& profile : hostkit::hostProfiles()) {
        names.push_back(profile.name);
    }
    return names;
}

struct CommonArguments {
    std::string plugin;
    std::string profile;
    bool log = false;

    EditorOptions options() const { return {hostkit::pathFromUtf8(plugin), profile, log}; }
};

void declareCommon(CLI::App& app, CommonArguments& common) {
    app.add_option("--plugin", common.plugin, "The plug-in (default: " + hostkit::PluginLibrary::usualFileName() +
                                                  " in the program's folder)")
        ->type_name("PATH");
    app.add_option("--profile", common.profile, profileHelp())
        ->check(CLI::IsMember(profileNames()).description(""))
        ->type_name("NAME");
    app.add_flag("--log", common.log, "Switch the plug-in's log on for this run and print its path");
}

ExitCode runCommand(Command& command, const EditorOptions& options) {
    try {
        return command.run(options);
    } catch (const CannotLoad& error) {
        std::cerr << "importhost: " << error.what() << "\n";
        return kNotLoaded;
    } catch (const UsageError& error) {
        std::cerr << "importhost: " << error.what() << "\n";
        return kUsage;
    } catch (const std::exception& error) {
        std::cerr << "importhost: " << error.what() << "\n";
        return kFailed;
    }
}

}  // namespace

int runCommandLine(const std::vector<std::string>& arguments) {
    CLI::App app(kPurpose, "importhost");
    app.allow_windows_style_options(false);   // a path may begin with a slash
    app.require_subcommand(1);
    app.set_version_flag("--version", std::string("importhost ").append(programVersion()));
    CommonArguments common;
    declareCommon(app, common);

    std::vector<std::unique_ptr<Command>> commands;
    std::vector<CLI::App*> subcommands;
    for (const CommandRow& row : kCommands) {
        commands.push_back(row.make());
        subcommands.push_back(app.add_subcommand(row.name, row.purpose)->fallthrough());
        commands.back()->declare(*subcommands.back());
    }
    app.footer(kFooter);        // set after the commands were added, or they would inherit it
    try {
        // The parser expects the list in reverse.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kGood : kUsage;
    }
    const auto chosen = std::find_if(subcommands.begin(), subcommands.end(),
                                     [](const CLI::App* subcommand) { return subcommand->parsed(); });
    return runCommand(*commands[static_cast<std::size_t>(chosen - subcommands.begin())], common.options());
}

}  // namespace importhost
