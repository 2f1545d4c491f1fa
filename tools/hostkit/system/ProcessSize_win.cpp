#include "hostkit/system/ProcessSize.h"

#include <windows.h>

#include <psapi.h>

namespace hostkit {

namespace {

// No program comes near: numbers of handles are given out from the lowest, in steps of four.
constexpr std::uintptr_t kHighestHandle = 4 * 16384;

std::uint64_t countHandlesOneByOne() {
    std::uint64_t count = 0;
    for (std::uintptr_t number = 4; number <= kHighestHandle; number += 4) {
        DWORD flags = 0;
        count += GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags) ? 1 : 0;
    }
    return count;
}

// Not every Windows counts them: some answer zero, which no running program can have.
std::uint64_t countHandles() {
    DWORD handles = 0;
    return GetProcessHandleCount(GetCurrentProcess(), &handles) && handles > 0 ? handles : countHandlesOneByOne();
}

}  // namespace

ProcessSize processSize() {
    ProcessSize size;
    PROCESS_MEMORY_COUNTERS counters{};
    if (K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters))) {
        size.bytes = counters.PagefileUsage;
        size.peakBytes = counters.PeakPagefileUsage;
    }
    size.handles = countHandles();
    return size;
}

}  // namespace hostkit
