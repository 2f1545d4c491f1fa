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
    const HostChange* change = nullptr;
};
Tables tables;

imStdParms* changedHost(const HostChange& change, const imStdParms& host) {
    tables.change = &change;
    tables.stdParms = host;
    tables.suites = *host.piSuites;
    tables.utility = *tables.suites.utilFuncs;
    tables.trueMemory = tables.suites.memFuncs;
    tables.memory = *tables.trueMemory;
    tables.trueBasic = tables.utility.getSPBasicSuite();
    tables.basic = *tables.trueBasic;
    if (change.acquireSuite) {
        tables.basic.AcquireSuite = [](const char* name, csSDK_int32 version, const void** suite) {
            return tables.change->acquireSuite(name, version, suite);
        };
    }
    if (change.releaseSuite) {
        tables.basic.ReleaseSuite = [](const char* name, csSDK_int32 version) {
            return tables.change->releaseSuite(name, version);
        };
    }
    if (change.newPtr) {
        tables.memory.newPtr = [](csSDK_uint32 size) { return tables.change->newPtr(size); };
    }
    tables.utility.getSPBasicSuite = [] { return &tables.basic; };
    tables.suites.utilFuncs = &tables.utility;
    tables.suites.memFuncs = &tables.memory;
    tables.stdParms.piSuites = &tables.suites;
    return &tables.stdParms;
}

}  // namespace

csSDK_int32 Call::pass() const { return rightImportEntry(selector, stdParms, param1, param2); }

Answer on(csSDK_int32 selector, Answer answer) {
    return [=](const Call& call) { return call.selector == selector ? answer(call) : call.pass(); };
}

Answer before(csSDK_int32 selector, std::function<void(const Call& call)> act) {
    return on(selector, [=](const Call& call) {
        act(call);
        return call.pass();
    });
}

Answer after(csSDK_int32 selector, std::function<void(const Call& call, csSDK_int32 result)> act) {
    return on(selector, [=](const Call& call) {
        const csSDK_int32 result = call.pass();
        act(call, result);
        return result;
    });
}

Answer always(csSDK_int32 selector, csSDK_int32 answer) {
    return on(selector, [=](const Call&) { return answer; });
}

Answer saysOther(csSDK_int32 selector, csSDK_int32 answer, csSDK_int32 other) {
    return on(selector, [=](const Call& call) {
        const csSDK_int32 result = call.pass();
        return result == answer ? other : result;
    });
}

Answer sticksTo(csSDK_int32 selector, csSDK_int32 answer) {
    return on(selector, [=, isStuck = false](const Call& call) mutable {
        const csSDK_int32 result = isStuck ? answer : call.pass();
        isStuck = result == answer;
        return result;
    });
}

Answer withHost(HostChange change) {
    return [=](const Call& call) {
        return Call{call.selector, changedHost(change, *call.stdParms), call.param1, call.param2}.pass();
    };
}

SPBasicSuite& trueBasicSuite() { return *tables.trueBasic; }

PlugMemoryFuncs& trueMemory() { return *tables.trueMemory; }

void leakSuite(const Call& call) {
    const void* suite = nullptr;
    call.stdParms->piSuites->utilFuncs->getSPBasicSuite()->AcquireSuite(kPrSDKTimeSuite, kPrSDKTimeSuiteVersion,
                                                                        &suite);
}

}  // namespace wrong
