#include "ProcessMemory.h"

#include <windows.h>

#include <psapi.h>

#include <stdexcept>

std::uint64_t peakProcessBytes() {
    PROCESS_MEMORY_COUNTERS counters = {};
    if (GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) == 0) {
        throw std::runtime_error("the system does not report the memory of the process");
    }
    return counters.PeakPagefileUsage;
}
