// A host that refuses: suites, functions of suites, memory.
#include "importhost/validate/checks/host/OddTicks.h"
#include "importhost/validate/checks/host/RefusedSuites.h"
#include "importhost/validate/checks/host/TroubledHost.h"
#include "importhost/validate/checks/stage/ErrorEvents.h"
#include "importhost/validate/checks/stage/MixedCompilers.h"
#include "importhost/validate/framework/Groups.h"

namespace importhost::validate {

namespace {

using hostkit::HostCall;

// The host that refuses its basic suite is none: nothing could be asked of it.
const std::vector<HostCall> kNeverRefused = {HostCall::GetSPBasicSuite};

// --- failing-host-functions -------------------------------------------------------------------------------------

constexpr CallDemand kDemands[] = {
    {HostCall::AcquireSuite, Allowed::AsEver},                  // it is asked for again when it is needed
    {HostCall::ReleaseSuite, Allowed::AsEver},
    {HostCall::DisposePPix, Allowed::AsEver},
    {HostCall::FormatIsCompressed, Allowed::AsEver},            // only logged
    {HostCall::FormatHasAlpha, Allowed::AsEver},
    {HostCall::FormatIsOriginTopLeft, Allowed::AsEver},
    {HostCall::GetSizeForPixelBuffer, Allowed::AsEver},
    {HostCall::UninterleaveFrom8, Allowed::AsEverButEmpty},     // its result is the host's own
    {HostCall::UninterleaveFrom16, Allowed::AsEverButEmpty},
    {HostCall::UninterleaveFrom24, Allowed::AsEverButEmpty},
    {HostCall::UninterleaveFrom32, Allowed::AsEverButEmpty},
    {HostCall::CreatePPix, Allowed::Fixed, imOtherErr, aiUnknownError},
};

void failingHostFunctions(CheckRun& run) {
    playInTrouble(run, {.demands = kDemands, .spared = kNeverRefused, .moreOfEachCall = run.effort(0, 5)});
}

// --- suites-run-out ---------------------------------------------------------------------------------------------

constexpr CallDemand kNoMoreSuites[] = {{HostCall::AcquireSuite, Allowed::Fixed, kExceptionResult, kExceptionResult}};

void suitesRunOut(CheckRun& run) {
    skipIfCompilersAreMixed(run);    // without an Error Suite the plug-in throws
    playInTrouble(run, {.trouble = Trouble::FailsFromThenOn,
                        .demands = kNoMoreSuites,
                        .only = {HostCall::AcquireSuite},
                        .moreOfEachCall = run.effort(0, 40)});
}

constexpr Check kRefusingHostChecks[] = {
    {"refused-suites", 2,
     "Each of the suites that importers use is refused at every call of an editor's work with a clip, in every version "
     "or just in the one that this importer uses: it takes no other instead. Calls that can do without it (all of "
     "them for the PPix Cache Suite and the Error Suite) answer as ever; the others answer 99 and send an error event "
     "that names the suite and its version; asked again, with the suite granted, the same clip "
     "answers as if nothing had been. An older or newer editor lacks suites.",
     refusedSuites},
    {"failing-host-functions", 3,
     "Each kind of call that the plug-in makes of the host fails once: the first time that it is made in every kind of "
     "step of an editor's work with a clip, and at higher levels a few more times. The plug-in answers the step "
     "with a failure (imOtherErr where no frame buffer can be had) or, where it needs nothing from the host's "
     "function, as ever. It delivers no picture as good that is none, gives back all that it took, and "
     "works again when the host does. Hosts fail when memory is short; a plug-in that takes that badly takes the "
     "editor with it.",
     failingHostFunctions, Company::Shared, kLongTimeLimit},
    {"host-profiles", 4,
     "Every known kind of host gets the same pictures, sound and descriptions of the same clip: with older and newer "
     "records, with rows that are padded, tight, or at odd addresses, with coarse ticks, without the suites that are "
     "not needed. Else a clip looks wrong in one version of the editor and right in another.",
     hostProfiles},
    {"odd-ticks", 4,
     "A host may count any number of ticks a second: a prime number, few, more than 64 bits can multiply, none, "
     "backwards. A frame is found at each of its ticks, with their whole number for one frame truncated; where no "
     "tick stands for a frame, the request is answered all the same, and nothing is divided by zero.",
     oddTicks},
    {"suites-run-out", 5,
     "From one request for a suite on (some are tried, more at higher levels) the host refuses them all, as one does "
     "that is being shut down or that ran out of memory. What needs a suite that the plug-in does not hold "
     "yet is answered with 99, all else as ever; nothing "
     "is kept, and everything works again when the host grants suites again.",
     suitesRunOut, Company::Shared, kLongTimeLimit},
};

}  // namespace

std::span<const Check> refusingHostChecks() { return kRefusingHostChecks; }

}  // namespace importhost::validate
