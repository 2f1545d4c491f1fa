// A plug-in that is wrong on purpose: the real one, with one fault put before it. Which one is chosen by the
// environment variable WRONG_PLUGIN; without it the plug-in is right.
//
// A fault is a function with the entry's own parameters that calls `right` for what it leaves alone, and a row in
// the table of its group.
#pragma once

#include "sdk/SdkAsyncImporter.h"
#include "sdk/SdkImporter.h"
#include "sdk/SdkSuites.h"

#include <span>
#include <string_view>

namespace wrong {

using Entry = csSDK_int32 (*)(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);

struct Fault {
    std::string_view name;          // kebab-case, what is wrong
    Entry entry = nullptr;
};

// The real plug-in's entry.
csSDK_int32 right(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);

// The real plug-in's entry, with a host that differs from the true one in these functions; null leaves one alone.
// They may call the true host through `trueBasicSuite` and `trueMemory`.
struct HostChange {
    SPErr (*acquireSuite)(const char* name, csSDK_int32 version, const void** suite) = nullptr;
    SPErr (*releaseSuite)(const char* name, csSDK_int32 version) = nullptr;
    char* (*newPtr)(csSDK_uint32 size) = nullptr;
};
csSDK_int32 rightWithHost(const HostChange& change, csSDK_int32 selector, imStdParms* stdParms, void* param1,
                          void* param2);
SPBasicSuite* trueBasicSuite();
PlugMemoryFuncs* trueMemory();

// The tables, each in a file of its own.
std::span<const Fault> libraryFaults();
std::span<const Fault> protocolFaults();
std::span<const Fault> frameFaults();
std::span<const Fault> audioFaults();
std::span<const Fault> asyncFaults();
std::span<const Fault> refusingHostFaults();
std::span<const Fault> codecFaults();
std::span<const Fault> diskFaults();
std::span<const Fault> exceptionFaults();
std::span<const Fault> stateFaults();
std::span<const Fault> measureFaults();
std::span<const Fault> frameworkFaults();

}  // namespace wrong
