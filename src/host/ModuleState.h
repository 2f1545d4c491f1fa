// What one loaded module keeps beside the files it has open.
#pragma once

#include "host/HostSuite.h"

#include <atomic>

// Without a destructor: when a host unloads the module without a shutdown, its suites may be gone already.
struct ModuleState {
    std::atomic<bool> logSwitchRead{false};
    HostSuite<PrSDKErrorSuite3>* errorSuite = nullptr;   // owned, from imInit to imShutdown
};

extern constinit ModuleState moduleState;
