// The state of the loaded module, apart from its open files.
#pragma once

#include "host/HostSuite.h"

#include <atomic>

using ErrorSuite = HostSuite<PrSDKErrorSuite3>;

// Has no destructor: if a host unloads the module without a shutdown, its suites may be gone already.
struct ModuleState {
    std::atomic<bool> logSwitchRead{false};
    ErrorSuite* errorSuite = nullptr;   // owned, from imInit to imShutdown
};

extern constinit ModuleState moduleState;
