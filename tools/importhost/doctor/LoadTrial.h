// Tests whether a plug-in can be loaded: in a separate process, because it may crash or hang. The plug-in is not
// called, so it writes no log.
#pragma once

#include <filesystem>
#include <string>

namespace importhost::doctor {

struct LoadTrial {
    bool loads = false;
    std::string failure;                // a sentence, if it cannot be loaded
    std::filesystem::path codec;        // the codec library that was loaded with it; empty if unknown
};

// The file name of the codec library.
std::string codecFileName();

// Starts this program again, with `--try PLUGIN`, and reads its answer.
LoadTrial tryToLoad(const std::filesystem::path& plugin);

// Runs in that process: loads the plug-in and prints the answer.
void tryAsChild(const std::filesystem::path& plugin);

}  // namespace importhost::doctor
