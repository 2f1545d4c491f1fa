// The plug-in's logs that this program caused. Others may appear meanwhile, of an editor or of a run beside this one:
// they are not looked at and not removed.
#pragma once

#include "hostkit/plugin/PluginLog.h"

#include <filesystem>
#include <string>
#include <vector>

namespace importhost::validate {

// Whether a log's line without its prefix says that this program wrote it. Windows gives the program's path in the
// code page of the system: beyond ASCII any path is taken for this one.
bool namesThisProgram(const std::string& message);

// Of the logs that have appeared, those that say so; a log that cannot be read does not.
std::vector<std::filesystem::path> ownLogs(const hostkit::PluginLog& log);

// What cannot be removed stays.
void removeFiles(const std::vector<std::filesystem::path>& files);

}  // namespace importhost::validate
