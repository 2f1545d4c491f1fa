#include "hostkit/plugin/PluginLog.h"

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace hostkit {

namespace {

constexpr wchar_t kKey[] = L"Software\\Quorvane";
constexpr wchar_t kValue[] = L"EnableAdobeLog";

struct Value {
    DWORD type = 0;
    std::vector<BYTE> bytes;
};

std::optional<Value> readValue(HKEY key) {
    Value value;
    DWORD size = 0;
    if (RegQueryValueExW(key, kValue, nullptr, &value.type, nullptr, &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    value.bytes.resize(size);
    if (RegQueryValueExW(key, kValue, nullptr, &value.type, value.bytes.data(), &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return value;
}

void writeValue(HKEY key, const Value& value) {
    const LSTATUS status =
        RegSetValueExW(key, kValue, 0, value.type, value.bytes.data(), static_cast<DWORD>(value.bytes.size()));
    if (status != ERROR_SUCCESS) {
        throw std::runtime_error("The log switch cannot be set (error " + std::to_string(status) + ").");
    }
}

HKEY openKey(bool& created) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    const LSTATUS status = RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_QUERY_VALUE | KEY_SET_VALUE,
                                           nullptr, &key, &disposition);
    if (status != ERROR_SUCCESS) {
        throw std::runtime_error("The key of the log switch cannot be opened (error " + std::to_string(status) + ").");
    }
    created = disposition == REG_CREATED_NEW_KEY;
    return key;
}

}  // namespace

struct LogSwitch::Saved {
    bool keyWasMissing = false;
    std::optional<Value> value;
};

LogSwitch::LogSwitch(bool on) : m_saved(std::make_unique<Saved>()) {
    const HKEY key = openKey(m_saved->keyWasMissing);
    m_saved->value = readValue(key);
    try {
        if (on) {
            writeValue(key, {REG_DWORD, {1, 0, 0, 0}});
        } else {
            RegDeleteValueW(key, kValue);
        }
    } catch (...) {
        RegCloseKey(key);
        throw;
    }
    RegCloseKey(key);
}

LogSwitch::~LogSwitch() {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, KEY_SET_VALUE, &key) == ERROR_SUCCESS) {
        RegDeleteValueW(key, kValue);
        if (m_saved->value) {
            const std::vector<BYTE>& bytes = m_saved->value->bytes;
            RegSetValueExW(key, kValue, 0, m_saved->value->type, bytes.data(), static_cast<DWORD>(bytes.size()));
        }
        RegCloseKey(key);
        if (m_saved->keyWasMissing) {
            RegDeleteKeyW(HKEY_CURRENT_USER, kKey);
        }
    }
}

bool LogSwitch::isOn() {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
        return false;
    }
    const std::optional<Value> value = readValue(key);
    RegCloseKey(key);
    return value && std::any_of(value->bytes.begin(), value->bytes.end(), [](BYTE byte) { return byte != 0; });
}

std::filesystem::path pluginLogFolder() {
    wchar_t profile[MAX_PATH] = {};
    if (SHGetFolderPathW(nullptr, CSIDL_PROFILE, nullptr, 0, profile) != S_OK) {
        throw std::runtime_error("The user's profile folder is not known.");
    }
    return std::filesystem::path(profile) / L"quorvane" / L"adobe";
}

}  // namespace hostkit
