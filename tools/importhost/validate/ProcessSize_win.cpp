#include "importhost/validate/ProcessSize.h"

#include <windows.h>

#include <psapi.h>

namespace importhost::validate {

namespace {

// Handles are small multiples of four, the lowest free one given out first.
constexpr std::uintptr_t kHandleStep = 4;
constexpr std::uintptr_t kLastHandle = 0x8000;

// Not every system that runs Windows programs tells how many handles there are, but all tell whether there is one.
std::uint64_t countHandles() {
    std::uint64_t count = 0;
    for (std::uintptr_t handle = kHandleStep; handle < kLastHandle; handle += kHandleStep) {
        DWORD flags = 0;
        count += GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) ? 1 : 0;
    }
    return count;
}

}  // namespace

ProcessSize processSize() {
    ProcessSize size;
    PROCESS_MEMORY_COUNTERS counters{};
    if (K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters))) {
        size.bytes = counters.PagefileUsage;
    }
    size.handles = countHandles();
    return size;
}

}  // namespace importhost::validate
