#include "log/LogSystem.h"

#include <windows.h>

namespace logSystem {

bool switchIsOn() {
    HKEY key = nullptr;
    RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\Quorvane", 0, KEY_QUERY_VALUE, &key);
    DWORD value = 0;
    DWORD size = sizeof value;
    // The type is not checked: any value of at most four bytes counts.
    const LSTATUS result =
        RegQueryValueExA(key, "EnableAdobeLog", nullptr, nullptr, reinterpret_cast<BYTE*>(&value), &size);
    RegCloseKey(key);
    return result == ERROR_SUCCESS && value != 0;
}

std::tm localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    localtime_s(&local, &now);
    return local;
}

unsigned long threadNumber() {
    return GetCurrentThreadId();
}

std::string applicationPath() {
    char path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
    return std::string(path, length < sizeof path ? length : sizeof path - 1);
}

void openConsole() {
    AllocConsole();
    SetConsoleScreenBufferSize(GetStdHandle(STD_OUTPUT_HANDLE), COORD{120, 500});
}

void writeConsole(const char* line) {
    DWORD written = 0;
    WriteConsoleA(GetStdHandle(STD_OUTPUT_HANDLE), line, static_cast<DWORD>(lstrlenA(line)), &written, nullptr);
}

}  // namespace logSystem
