// The common part of all commands that work with a started plug-in.
#include "importhost/commands/Command.h"

#include "hostkit/system/Text.h"

#include <iostream>

namespace importhost {

namespace {

// Problems and the path of the log are written to standard error, so that programs can read the output.
ExitCode endRun(Editor& editor, bool log, ExitCode code) {
    const std::vector<std::string>& problems = editor.finish();
    for (const std::string& problem : problems) {
        std::cerr << "importhost: " << problem << "\n";
    }
    if (log) {
        const auto files = editor.logFiles();
        std::cerr << (files.empty() ? "importhost: The plug-in wrote no log.\n" : "");
        for (const auto& file : files) {
            std::cerr << "log: " << hostkit::toUtf8(file) << "\n";
        }
    }
    return code == kGood && !problems.empty() ? kFailed : code;
}

}  // namespace

ExitCode EditorCommand::run(const EditorOptions& given) {
    EditorOptions options = given;
    prepare(options);
    Editor editor(options);
    const csSDK_int32 started = editor.started().init.result;
    if (started != imNoErr) {
        std::cerr << "importhost: The plug-in's start failed with " << started << ".\n";
        return endRun(editor, options.log, kFailed);
    }
    ExitCode code = kFailed;
    try {
        code = runWith(editor);
    } catch (const UsageError& error) {
        std::cerr << "importhost: " << error.what() << "\n";
        code = kUsage;
    } catch (const std::exception& error) {
        std::cerr << "importhost: " << error.what() << "\n";
    }
    return endRun(editor, options.log, code);
}

}  // namespace importhost
