// What one loaded module keeps beside the files it has open.
#pragma once

#include "host/HostSuite.h"

#include <atomic>

using ErrorSuite = HostSuite<PrSDKErrorSuite3>;

// Without a destructor: when a host unloads the module without a shutdown, its suites may be gone already.
struct ModuleState {
    std::atomic<bool> logSwitchRead{false};
    ErrorSuite* errorSuite = nullptr;   // owned, from imInit to imShutdown
};

extern constinit ModuleState moduleState;
