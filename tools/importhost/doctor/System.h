// What the doctor asks of the operating system. Nothing here changes anything.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace importhost::doctor {

// "Windows 10 Pro, build 19045"; on other systems a word that says so.
std::string systemName();

// Whether the host exists for this system.
bool hostRunsHere();

struct RegisteredHost {
    std::string version;                // "22.0"
    std::filesystem::path folder;       // its plug-ins' folder, as it was registered
};

// The hosts that are known to the system, in no order.
std::vector<RegisteredHost> registeredHosts();

// The folder in which a host looks that says nothing else.
std::filesystem::path usualPluginFolder();

// Where the system finds a library that a plug-in in `folder` names: there, or among its own places. Not the present
// folder, which is another one when the host runs.
std::optional<std::filesystem::path> findLibrary(const std::string& fileName, const std::filesystem::path& folder);

// The file of the loaded library that holds the function at `address`; empty when there is none.
std::filesystem::path libraryAt(const void* address);

}  // namespace importhost::doctor
