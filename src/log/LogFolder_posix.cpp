#include "log/LogFolder.h"

#include <cstdlib>
#include <string>
#include <sys/stat.h>

namespace {

void enterFolder(std::filesystem::path& path, const char* name) {
    path /= name;
    mkdir(path.c_str(), 0777);   // the folder may exist
}

}  // namespace

LogFolder::LogFolder() {
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0') {
        return;
    }
    std::filesystem::path path = home;
    enterFolder(path, "quorvane");
    enterFolder(path, "adobe");
    m_path = path;
}

std::FILE* LogFolder::open(const char* baseName, int counter, bool toWrite) const {
    char number[16];
    std::snprintf(number, sizeof number, "_%02d.log", counter);
    return std::fopen((m_path / (std::string(baseName) + number)).c_str(), toWrite ? "w" : "r");
}
