#include "importhost/validate/checks/host/TroublePlan.h"

#include "importhost/validate/checks/stage/ErrorEvents.h"

#include "hostkit/sessions/Names.h"

namespace importhost::validate {

namespace {

using hostkit::HostCall;

constexpr char kNoErrorSuite[] = "Could not acquire suite: 'Premiere Error Suite', ver: 3";

CallDemand demandOf(const TroublePlan& plan, HostCall call) {
    for (const CallDemand& demand : plan.demands) {
        if (demand.call == call) {
            return demand;
        }
    }
    return {call};
}

std::string insteadOf(const Step& step, csSDK_int32 found, const std::string& wanted) {
    const bool escaped = found == hostkit::kEscapedException;
    return (escaped ? "an exception left the plug-in" : "answered with " + step.resultText(found)) + " instead of " +
           wanted;
}

// Without an Error Suite there is nobody to tell, so what the guard cannot tell leaves it.
bool mayEscape(const TroublePlan& plan, const TroubledStep& taken) {
    return plan.trouble == Trouble::FailsFromThenOn && taken.step.selector == imInit && !taken.step.isAsync &&
           taken.escapedText == kNoErrorSuite;
}

bool isFailure(const Step& step, csSDK_int32 result) {
    return result != imNoErr && result != hostkit::kEscapedException &&
           (step.isAsync || hostkit::resultName(result) != "unknown");
}

bool isAllowedResult(CheckRun& run, const CallDemand& demand, const TroubledStep& taken) {
    const csSDK_int32 found = taken.found.result;
    switch (demand.allowed) {
        case Allowed::AnyFailure:
            return run.expect(isFailure(taken.step, found), insteadOf(taken.step, found, "a failure"));
        case Allowed::Fixed: {
            const csSDK_int32 fixed = taken.step.isAsync ? demand.asyncResult : demand.result;
            return run.expect(found == fixed, insteadOf(taken.step, found, taken.step.resultText(fixed)));
        }
        default:
            return run.expect(false, insteadOf(taken.step, found, taken.step.resultText(taken.usual.result)) +
                                         ", although nothing that it needs is missing");
    }
}

bool isAllowedFailure(CheckRun& run, const TroublePlan& plan, const CallDemand& demand, const TroubledStep& taken) {
    if (taken.found == taken.usual) {
        return true;
    }
    if (taken.found.result == taken.usual.result) {
        return run.expect(demand.allowed == Allowed::AsEverButEmpty,
                          insteadOf(taken.step, taken.found.result, "a failure") +
                              ", but what was delivered differs from what an untroubled host gets");
    }
    return mayEscape(plan, taken) || isAllowedResult(run, demand, taken);
}

// What a decode throws comes to light when its frame is collected, and not at all when it is dropped. What is thrown
// at something given back may be kept from the host.
bool mayStaySilent(HostCall call, const TroubledStep& taken) { return taken.step.isAsync || givesBack(call); }

bool isAllowedThrow(CheckRun& run, HostCall call, const TroubledStep& taken) {
    const csSDK_int32 found = taken.found.result;
    if (taken.found == taken.usual && (!taken.struck || mayStaySilent(call, taken))) {
        return true;
    }
    return run.expect(found == kExceptionResult,
                      insteadOf(taken.step, found, taken.step.resultText(kExceptionResult)) +
                          " after the host threw an exception");
}

}  // namespace

bool givesBack(HostCall call) {
    return call == HostCall::ReleaseSuite || call == HostCall::DisposePPix || call == HostCall::FreeBlock ||
           call == HostCall::DisposeHandle;
}

bool isAllowed(CheckRun& run, const TroublePlan& plan, HostCall call, const TroubledStep& taken) {
    const bool throws = plan.trouble == Trouble::Throws;
    const bool isGood = throws ? isAllowedThrow(run, call, taken)
                               : isAllowedFailure(run, plan, demandOf(plan, call), taken);
    if (!isGood || taken.step.isAsync || taken.found.result != kExceptionResult) {
        return isGood;
    }
    // While it starts and shuts down the plug-in may have no Error Suite.
    const bool mayBeMute = taken.step.selector == imInit || taken.step.selector == imShutdown;
    return (mayBeMute && taken.events.empty()) ||
           expectErrorEvent(run, taken.events, taken.step.selector, throws ? kThrownText : "");
}

}  // namespace importhost::validate
