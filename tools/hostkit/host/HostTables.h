// The host's function tables, filled once. Inner header of the host's own parts.
#pragma once

#include "hostkit/host/Host.h"

#include <sstream>

namespace hostkit {

imCallbackFuncs* callbackTable();
piSuites* piSuitesTable();
SPBasicSuite* basicTable();
PlugMemoryFuncs* memoryTable();

const PrSDKPPixCreatorSuite* framesCreatorTable();
const PrSDKPPixSuite* framesTable();
const PrSDKAudioSuite* audioTable();

// The table of a suite, null for one that no host has.
const void* suiteTable(const char* name, csSDK_int32 version);

// Opens every host function: books the call with its arguments and gives the result that a planned failure forces.
template <class... Parts>
std::optional<csSDK_int32> enter(HostCall call, const Parts&... arguments) {
    Host& host = Host::current();
    std::ostringstream text;
    if (host.calls().wantsLines()) {
        ((text << arguments), ...);
    }
    return host.onCall(call, text.str());
}

}  // namespace hostkit
