#include "importhost/validate/ProcessSize.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace importhost::validate {

ProcessSize processSize() {
    ProcessSize size;
    std::ifstream statm("/proc/self/statm");
    std::uint64_t pages = 0;
    std::uint64_t resident = 0;
    if (statm >> pages >> resident) {
        size.bytes = resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    }
    std::error_code error;
    const std::filesystem::directory_iterator files("/proc/self/fd", error);
    size.handles = static_cast<std::uint64_t>(std::distance(begin(files), end(files)));
    return size;
}

}  // namespace importhost::validate
