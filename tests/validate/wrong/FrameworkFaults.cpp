// Faults that end or stop a process, to prove that the validator outlives them.
#include "wrong/Fault.h"

#include <chrono>
#include <limits>
#include <thread>

namespace wrong {

namespace {

const Fault kFrameworkFaults[] = {
    {"crashes-at-open", before(imOpenFile8, [](const Call&) {
         volatile int* volatile nowhere = nullptr;
         *nowhere = 1;
     })},
    {"hangs-at-highest-selector", before(std::numeric_limits<csSDK_int32>::max(), [](const Call&) {
         for (;;) {
             std::this_thread::sleep_for(std::chrono::seconds(1));
         }
     })},
};

}  // namespace

std::span<const Fault> frameworkFaults() { return kFrameworkFaults; }

}  // namespace wrong
