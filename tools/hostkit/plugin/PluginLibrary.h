// A plug-in's library in memory, loaded as the host loads it: from its full path, with the libraries beside it found.
#pragma once

#include "sdk/SdkImporter.h"

#include <filesystem>
#include <string>

namespace hostkit {

// The exported entry of an importer.
using ImporterEntry = csSDK_int32 (*)(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);

class PluginLibrary {
public:
    // Loads the library and finds its entry. Throws std::runtime_error with a whole sentence when the file cannot
    // be loaded (or a library that it needs) or has no `xImportEntry`.
    explicit PluginLibrary(const std::filesystem::path& path);
    ~PluginLibrary();                                   // unloads it
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    ImporterEntry entry() const { return m_entry; }
    const std::filesystem::path& path() const { return m_path; }

    // The system's own handle of the loaded library.
    void* handle() const { return m_library; }

    // The address of an exported name, null when the library does not export it.
    void* symbol(const char* name) const;

    // An exported name of another library that is loaded already; null when either is missing. `fileName` is the
    // library's file name without a folder. Does not keep that library loaded.
    static void* symbolOfLoadedLibrary(const std::string& fileName, const char* name);

    // Whether a library of this file name is in the process.
    static bool isLoaded(const std::string& fileName);

    // The importer's usual file name on this system, and the running program with its folder.
    static std::string usualFileName();
    static std::filesystem::path programFolder();
    static std::filesystem::path programPath();

private:
    std::filesystem::path m_path;
    void* m_library = nullptr;
    ImporterEntry m_entry = nullptr;
};

}  // namespace hostkit
