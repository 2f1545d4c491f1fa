// Faults that end or stop a process, to prove that the validator outlives them.
#include "wrong/Fault.h"

#include <chrono>
#include <limits>
#include <thread>

namespace wrong {

namespace {

csSDK_int32 crashesAtOpen(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector == imOpenFile8) {
        volatile int* volatile nowhere = nullptr;
        *nowhere = 1;
    }
    return right(selector, stdParms, param1, param2);
}

csSDK_int32 hangsAtHighestSelector(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    while (selector == std::numeric_limits<csSDK_int32>::max()) {
        std::this_thread::sleep_for(std::chrono::seconds(1));
    }
    return right(selector, stdParms, param1, param2);
}

constexpr Fault kFrameworkFaults[] = {
    {"crashes-at-open", crashesAtOpen},
    {"hangs-at-highest-selector", hangsAtHighestSelector},
};

}  // namespace

std::span<const Fault> frameworkFaults() { return kFrameworkFaults; }

}  // namespace wrong
