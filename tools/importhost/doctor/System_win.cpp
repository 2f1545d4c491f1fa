#include "importhost/doctor/System.h"

#include "hostkit/system/Text.h"

#include <windows.h>

#include <shlobj.h>

namespace importhost::doctor {

namespace {

constexpr wchar_t kHosts[] = L"Software\\Adobe\\Premiere Pro";
constexpr wchar_t kFolderValue[] = L"CommonPluginInstallPath";
constexpr wchar_t kWindows[] = L"Software\\Microsoft\\Windows NT\\CurrentVersion";
constexpr DWORD kMaxKeyName = 256;      // the system's limit, including a terminator

// A text value; empty if it does not exist.
std::wstring registryText(const std::wstring& key, const wchar_t* value) {
    DWORD bytes = 0;
    constexpr DWORD kFlags = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), value, kFlags, nullptr, nullptr, &bytes) != ERROR_SUCCESS) {
        return L"";
    }
    std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
    bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), value, kFlags, nullptr, text.data(), &bytes) != ERROR_SUCCESS) {
        return L"";
    }
    text.resize(text.find(L'\0'));
    return text;
}

std::vector<std::wstring> subkeys(const wchar_t* path) {
    std::vector<std::wstring> names;
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_ENUMERATE_SUB_KEYS, &key) != ERROR_SUCCESS) {
        return names;
    }
    wchar_t name[kMaxKeyName];
    DWORD size = kMaxKeyName;
    for (DWORD i = 0; RegEnumKeyExW(key, i, name, &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS; ++i) {
        names.emplace_back(name, size);
        size = kMaxKeyName;
    }
    RegCloseKey(key);
    return names;
}

}  // namespace

std::string systemName() {
    const std::wstring name = registryText(kWindows, L"ProductName");
    const std::wstring build = registryText(kWindows, L"CurrentBuildNumber");
    return hostkit::toUtf8(std::filesystem::path((name.empty() ? L"Windows" : name) + L", build " + build));
}

bool hostRunsHere() { return true; }

std::vector<RegisteredHost> registeredHosts() {
    std::vector<RegisteredHost> hosts;
    for (const std::wstring& version : subkeys(kHosts)) {
        const std::wstring folder = registryText(std::wstring(kHosts) + L"\\" + version, kFolderValue);
        if (!folder.empty()) {
            hosts.push_back({hostkit::toUtf8(std::filesystem::path(version)), folder});
        }
    }
    return hosts;
}

std::filesystem::path usualPluginFolder() {
    wchar_t programs[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, CSIDL_PROGRAM_FILES, nullptr, SHGFP_TYPE_CURRENT, programs);
    return std::filesystem::path(programs) / L"Adobe\\Common\\Plug-ins\\7.0\\MediaCore";
}

std::optional<std::filesystem::path> findLibrary(const std::string& fileName, const std::filesystem::path& folder) {
    const std::filesystem::path own = folder / hostkit::pathFromUtf8(fileName);
    if (std::error_code ignored; std::filesystem::exists(own, ignored)) {
        return own;
    }
    // Windows' own folders and those of PATH.
    wchar_t system[MAX_PATH] = {};
    wchar_t windows[MAX_PATH] = {};
    GetSystemDirectoryW(system, MAX_PATH);
    GetWindowsDirectoryW(windows, MAX_PATH);
    std::wstring paths(32768, L'\0');
    paths.resize(GetEnvironmentVariableW(L"PATH", paths.data(), static_cast<DWORD>(paths.size())));
    const std::wstring places = std::wstring(system) + L";" + windows + L";" + paths;
    wchar_t found[MAX_PATH] = {};
    const DWORD length =
        SearchPathW(places.c_str(), hostkit::pathFromUtf8(fileName).c_str(), nullptr, MAX_PATH, found, nullptr);
    return length > 0 && length < MAX_PATH ? std::optional<std::filesystem::path>(found) : std::nullopt;
}

std::filesystem::path libraryAt(const void* address) {
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            static_cast<const wchar_t*>(address), &module)) {
        return {};
    }
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

}  // namespace importhost::doctor
