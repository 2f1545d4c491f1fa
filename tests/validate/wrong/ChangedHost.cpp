// The real plug-in behind the faults, and a host for it that differs from the true one.
#include "wrong/Fault.h"

// Defined in the plug-in's own source, whose entry is renamed for this library.
extern "C" csSDK_int32 rightImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);

namespace wrong {

namespace {

// The changed tables stay: the plug-in may keep their addresses between calls.
struct Tables {
    imStdParms stdParms;
    piSuites suites;
    PlugUtilFuncs utility;
    PlugMemoryFuncs memory;
    SPBasicSuite basic;
    SPBasicSuite* trueBasic = nullptr;
    PlugMemoryFuncs* trueMemory = nullptr;
};
Tables tables;

SPBasicSuite* changedBasicSuite() { return &tables.basic; }

void change(const HostChange& wanted, const imStdParms& host) {
    tables.stdParms = host;
    tables.suites = *host.piSuites;
    tables.utility = *tables.suites.utilFuncs;
    tables.trueMemory = tables.suites.memFuncs;
    tables.memory = *tables.trueMemory;
    tables.trueBasic = tables.utility.getSPBasicSuite();
    tables.basic = *tables.trueBasic;
    if (wanted.acquireSuite) {
        tables.basic.AcquireSuite = wanted.acquireSuite;
    }
    if (wanted.releaseSuite) {
        tables.basic.ReleaseSuite = wanted.releaseSuite;
    }
    if (wanted.newPtr) {
        tables.memory.newPtr = wanted.newPtr;
    }
    tables.utility.getSPBasicSuite = changedBasicSuite;
    tables.suites.utilFuncs = &tables.utility;
    tables.suites.memFuncs = &tables.memory;
    tables.stdParms.piSuites = &tables.suites;
}

}  // namespace

csSDK_int32 right(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return rightImportEntry(selector, stdParms, param1, param2);
}

csSDK_int32 rightWithHost(const HostChange& wanted, csSDK_int32 selector, imStdParms* stdParms, void* param1,
                          void* param2) {
    change(wanted, *stdParms);
    return rightImportEntry(selector, &tables.stdParms, param1, param2);
}

SPBasicSuite* trueBasicSuite() { return tables.trueBasic; }

PlugMemoryFuncs* trueMemory() { return tables.trueMemory; }

}  // namespace wrong
