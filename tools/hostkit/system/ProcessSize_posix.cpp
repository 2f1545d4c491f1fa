#include "hostkit/system/ProcessSize.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace hostkit {

namespace {

std::uint64_t peakBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        std::uint64_t kibibytes = 0;
        if (word == "VmHWM:" && status >> kibibytes) {
            return kibibytes * 1024;
        }
    }
    return 0;
}

}  // namespace

ProcessSize processSize() {
    ProcessSize size;
    std::ifstream statm("/proc/self/statm");
    std::uint64_t pages = 0;
    std::uint64_t resident = 0;
    if (statm >> pages >> resident) {
        size.bytes = resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    }
    size.peakBytes = peakBytes();
    std::error_code error;
    const std::filesystem::directory_iterator files("/proc/self/fd", error);
    size.handles = static_cast<std::uint64_t>(std::distance(begin(files), end(files)));
    return size;
}

}  // namespace hostkit
