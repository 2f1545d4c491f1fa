#include "hostkit/plugin/PluginLibrary.h"

#include "hostkit/system/Text.h"

#include <dlfcn.h>
#include <link.h>

#include <stdexcept>

namespace hostkit {

namespace {

std::string lastErrorText() {
    const char* text = dlerror();
    return text ? text : "no reason given";
}

struct LoadedSearch {
    std::string fileName;
    std::string path;
};

// The loader knows libraries by the path they came from; ours are asked for by file name.
int compareLoaded(dl_phdr_info* info, std::size_t, void* search) {
    auto& wanted = *static_cast<LoadedSearch*>(search);
    if (std::filesystem::path(info->dlpi_name).filename() != wanted.fileName) {
        return 0;
    }
    wanted.path = info->dlpi_name;
    return 1;
}

std::string loadedPath(const std::string& fileName) {
    LoadedSearch search{fileName, {}};
    dl_iterate_phdr(compareLoaded, &search);
    return search.path;
}

}  // namespace

PluginLibrary::PluginLibrary(const std::filesystem::path& path) : m_path(std::filesystem::absolute(path)) {
    m_library = dlopen(m_path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!m_library) {
        throw std::runtime_error("The plug-in '" + toUtf8(m_path) + "' cannot be loaded (" + lastErrorText() + ").");
    }
    m_entry = reinterpret_cast<ImporterEntry>(symbol("xImportEntry"));
    if (!m_entry) {
        dlclose(m_library);
        throw std::runtime_error("'" + toUtf8(m_path) + "' is no importer: it does not export xImportEntry.");
    }
}

PluginLibrary::~PluginLibrary() { dlclose(m_library); }

void* PluginLibrary::symbol(const char* name) const { return dlsym(m_library, name); }

void* PluginLibrary::symbolOfLoadedLibrary(const std::string& fileName, const char* name) {
    const std::string path = loadedPath(fileName);
    void* library = path.empty() ? nullptr : dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (!library) {
        return nullptr;
    }
    void* address = dlsym(library, name);
    dlclose(library);
    return address;
}

bool PluginLibrary::isLoaded(const std::string& fileName) { return !loadedPath(fileName).empty(); }

std::string PluginLibrary::usualFileName() { return "ImporterQuorvane.so"; }

std::filesystem::path PluginLibrary::programPath() { return std::filesystem::read_symlink("/proc/self/exe"); }

std::filesystem::path PluginLibrary::programFolder() { return programPath().parent_path(); }

}  // namespace hostkit
