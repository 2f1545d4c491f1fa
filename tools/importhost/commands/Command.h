// A subcommand of the program. A new one is a file of its own and a row in CommandLine.cpp.
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

    // Does the work. What it throws is told as a failure.
    virtual ExitCode run(const EditorOptions& options) = 0;
};

// A command that works with one started plug-in, in this process.
class EditorCommand : public Command {
public:
    // Loads and starts the plug-in, does the work, and tells what was left uneven and where the log is.
    ExitCode run(const EditorOptions& options) final;

protected:
    // Before the plug-in is loaded: what the command needs to be otherwise.
    virtual void prepare(EditorOptions&) {}

    // Must leave no clip open.
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

// The whole program, apart from the system's part of main. Writes to standard output and standard error.
int runCommandLine(const std::vector<std::string>& arguments);

}  // namespace importhost
