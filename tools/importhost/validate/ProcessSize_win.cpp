#include "importhost/validate/ProcessSize.h"

#include <windows.h>

#include <psapi.h>

namespace importhost::validate {

ProcessSize processSize() {
    ProcessSize size;
    PROCESS_MEMORY_COUNTERS counters{};
    if (K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters))) {
        size.bytes = counters.PagefileUsage;
    }
    DWORD handles = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &handles)) {
        size.handles = handles;
    }
    return size;
}

}  // namespace importhost::validate
