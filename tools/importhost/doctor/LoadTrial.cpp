#include "importhost/doctor/LoadTrial.h"

#include "importhost/doctor/System.h"

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/system/ChildProcess.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>

namespace importhost::doctor {

namespace {

constexpr std::chrono::seconds kTimeLimit(60);

// The answer is two lines: one of these words, then the codec's path or the error.
constexpr std::string_view kLoaded = "loaded";
constexpr std::string_view kFailed = "failed";

}  // namespace

std::string codecFileName() { return CODEC_LIBRARY_NAME; }

LoadTrial tryToLoad(const std::filesystem::path& plugin) {
    hostkit::ChildResult child = hostkit::runProgram(hostkit::PluginLibrary::programPath(),
                                                     {"doctor", "--try", hostkit::toUtf8(plugin)}, kTimeLimit);
    std::erase(child.output, '\r');
    if (child.timedOut) {
        return {false, "A program that loads it hangs.", {}};
    }
    const auto separator = std::min(child.output.find('\n'), child.output.size());
    const std::string word = child.output.substr(0, separator);
    std::string rest = child.output.substr(separator);
    std::erase(rest, '\n');
    if (word == kFailed) {
        return {false, rest, {}};
    }
    // The exit counts too: a host also unloads the plug-in.
    if (word != kLoaded || child.exitCode != 0) {
        return {false, "A program that loads it ends with exit code " + std::to_string(child.exitCode) + ".", {}};
    }
    return {true, "", hostkit::pathFromUtf8(rest)};
}

void tryAsChild(const std::filesystem::path& plugin) {
    try {
        // Windows also searches the current folder, which is a different one for the host; the plug-in's own folder is
        // searched anyway.
        std::filesystem::current_path(plugin.parent_path());
        const hostkit::PluginLibrary library(plugin);
        const void* function = hostkit::PluginLibrary::symbolOfLoadedLibrary(codecFileName(), "quorvane_open");
        std::cout << kLoaded << "\n" << hostkit::toUtf8(libraryAt(function)) << "\n" << std::flush;
    } catch (const std::runtime_error& error) {
        std::cout << kFailed << "\n" << error.what() << "\n" << std::flush;
    }
}

}  // namespace importhost::doctor
