// Runs the program.
#pragma once

#include "hostkit/system/ChildProcess.h"
#include "hostkit/plugin/PluginLibrary.h"

#include <string>

inline hostkit::ChildResult avidumpOf(const std::string& path) {
    return hostkit::runProgram(hostkit::PluginLibrary::programFolder() / AVIDUMP_FILE_NAME, {path},
                               std::chrono::seconds(30));
}
