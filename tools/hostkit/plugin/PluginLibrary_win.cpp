#include "hostkit/plugin/PluginLibrary.h"

#include "hostkit/system/Text.h"

#include <windows.h>

#include <stdexcept>

namespace hostkit {

namespace {

std::string lastErrorText() {
    const DWORD code = GetLastError();
    wchar_t text[512] = {};
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                                  512, nullptr);
    while (length > 0 && (text[length - 1] == L'\r' || text[length - 1] == L'\n' || text[length - 1] == L'.')) {
        text[--length] = L'\0';
    }
    return "error " + std::to_string(code) + (length > 0 ? ", " + toUtf8(std::filesystem::path(text)) : "");
}

}  // namespace

PluginLibrary::PluginLibrary(const std::filesystem::path& path) : m_path(std::filesystem::absolute(path)) {
    // The altered search path looks for further libraries in the plug-in's own folder, as the editor does.
    const HMODULE module = LoadLibraryExW(m_path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module) {
        throw std::runtime_error("The plug-in '" + toUtf8(m_path) + "' cannot be loaded (" + lastErrorText() + ").");
    }
    m_library = module;
    m_entry = reinterpret_cast<ImporterEntry>(symbol("xImportEntry"));
    if (!m_entry) {
        FreeLibrary(module);
        throw std::runtime_error("'" + toUtf8(m_path) + "' is no importer: it does not export xImportEntry.");
    }
}

PluginLibrary::~PluginLibrary() { FreeLibrary(static_cast<HMODULE>(m_library)); }

void* PluginLibrary::symbol(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(m_library), name));
}

void* PluginLibrary::symbolOfLoadedLibrary(const std::string& fileName, const char* name) {
    const HMODULE module = GetModuleHandleW(pathFromUtf8(fileName).c_str());
    return module ? reinterpret_cast<void*>(GetProcAddress(module, name)) : nullptr;
}

bool PluginLibrary::isLoaded(const std::string& fileName) {
    return GetModuleHandleW(pathFromUtf8(fileName).c_str()) != nullptr;
}

std::string PluginLibrary::usualFileName() { return "ImporterQuorvane.prm"; }

std::filesystem::path PluginLibrary::programPath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::filesystem::path PluginLibrary::programFolder() { return programPath().parent_path(); }

}  // namespace hostkit
