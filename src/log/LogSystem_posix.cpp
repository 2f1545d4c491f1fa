// The native build's switch is the environment variable QUORVANE_ENABLE_ADOBE_LOG: on if set, not empty and not 0.
#include "log/LogSystem.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/syscall.h>
#include <unistd.h>

namespace logSystem {

bool switchIsOn() {
    const char* value = std::getenv("QUORVANE_ENABLE_ADOBE_LOG");
    return value != nullptr && *value != '\0' && std::strcmp(value, "0") != 0;
}

std::tm localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    localtime_r(&now, &local);
    return local;
}

unsigned long threadNumber() {
    return static_cast<unsigned long>(syscall(SYS_gettid));
}

std::string applicationPath() {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    return length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string();
}

void openConsole() {}

void writeConsole(const char* line) {
    std::fputs(line, stdout);
}

}  // namespace logSystem
