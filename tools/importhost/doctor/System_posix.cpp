#include "importhost/doctor/System.h"

#include <dlfcn.h>

namespace importhost::doctor {

std::string systemName() { return "Not Windows"; }

bool hostRunsHere() { return false; }

std::vector<RegisteredHost> registeredHosts() { return {}; }

std::filesystem::path usualPluginFolder() { return {}; }

std::optional<std::filesystem::path> findLibrary(const std::string& fileName, const std::filesystem::path& folder) {
    const std::filesystem::path own = folder / fileName;
    std::error_code ignored;
    return std::filesystem::exists(own, ignored) ? std::optional(own) : std::nullopt;
}

std::filesystem::path libraryAt(const void* address) {
    Dl_info info = {};
    return address && dladdr(address, &info) != 0 && info.dli_fname ? info.dli_fname : std::filesystem::path();
}

}  // namespace importhost::doctor
