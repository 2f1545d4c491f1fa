// Loading a plug-in to see whether it can be loaded: in a program of its own, since one that crashes or hangs at that
// is just what is looked for. Nothing of it is called, so that it writes no log.
#pragma once

#include <filesystem>
#include <string>

namespace importhost::doctor {

struct LoadTrial {
    bool loads = false;
    std::string failure;                // a sentence when it does not
    std::filesystem::path codec;        // the codec library that was loaded with it; empty when it was not found so
};

// The file name of the codec library.
std::string codecFileName();

// Starts this program again, with `--try PLUGIN`, and takes its answer.
LoadTrial tryToLoad(const std::filesystem::path& plugin);

// That program's part: loads the plug-in and prints the answer.
void tryAsChild(const std::filesystem::path& plugin);

}  // namespace importhost::doctor
