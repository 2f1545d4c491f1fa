#include "ProcessMemory.h"

#include <fstream>
#include <stdexcept>
#include <string>

std::uint64_t peakProcessBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmPeak:") {
            std::uint64_t kibibytes = 0;
            status >> kibibytes;
            return kibibytes * 1024;
        }
    }
    throw std::runtime_error("the system does not report the memory of the process");
}
