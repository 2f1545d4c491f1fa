// A subcommand of the program. To add one, add a file, its maker below and a row in CommandLine.cpp.
#pragma once

#include "importhost/clips/Editor.h"
#include "importhost/console/Program.h"

#include <memory>

namespace CLI {
class App;
}

namespace importhost {

class Command {
public:
    Command() = default;
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    // Adds the command's arguments; called once, before run.
    virtual void declare(CLI::App& app) = 0;

    // Does the work. Exceptions are reported as failures.
    virtual ExitCode run(const EditorOptions& options) = 0;
};

// A command that works with one started plug-in, in this process.
class EditorCommand : public Command {
public:
    // Loads and starts the plug-in, does the work, and reports what was not released and where the log is.
    ExitCode run(const EditorOptions& options) final;

protected:
    // Called before the plug-in is loaded: changes the options as the command requires.
    virtual void prepare(EditorOptions&) {}

    // Must close all clips.
    virtual ExitCode runWith(Editor& editor) = 0;
};

std::unique_ptr<Command> makeInfoCommand();
std::unique_ptr<Command> makeFramesCommand();
std::unique_ptr<Command> makeSheetCommand();
std::unique_ptr<Command> makeAudioCommand();
std::unique_ptr<Command> makeBenchCommand();
std::unique_ptr<Command> makeValidateCommand();
std::unique_ptr<Command> makeReplayCommand();
std::unique_ptr<Command> makeDoctorCommand();

// The whole program, except the system-specific part of main. Writes to standard output and standard error.
int runCommandLine(const std::vector<std::string>& arguments);

}  // namespace importhost
