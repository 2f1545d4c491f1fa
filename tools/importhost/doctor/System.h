// What the doctor needs from the operating system. Nothing here changes anything.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace importhost::doctor {

// "Windows 10 Pro, build 19045"; on other systems a text that says so.
std::string systemName();

// True if the host exists for this system.
bool hostRunsHere();

struct RegisteredHost {
    std::string version;                // "22.0"
    std::filesystem::path folder;       // its plug-in folder, as registered
};

// The hosts registered in the system, in no particular order.
std::vector<RegisteredHost> registeredHosts();

// The default plug-in folder of hosts that register none.
std::filesystem::path usualPluginFolder();

// Where the system finds a library for a plug-in in `folder`: there, or in the system's own folders. Not the current
// folder, which is a different one for the host.
std::optional<std::filesystem::path> findLibrary(const std::string& fileName, const std::filesystem::path& folder);

// The file of the loaded library that contains the function at `address`; empty if none does.
std::filesystem::path libraryAt(const void* address);

}  // namespace importhost::doctor
