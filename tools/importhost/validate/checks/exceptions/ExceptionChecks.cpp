// A host that throws.
#include "importhost/validate/checks/exceptions/GuardChecks.h"
#include "importhost/validate/checks/host/TroubledHost.h"
#include "importhost/validate/checks/stage/MixedCompilers.h"
#include "importhost/validate/framework/Groups.h"

namespace importhost::validate {

namespace {

using hostkit::HostCall;

// --- throwing-host ----------------------------------------------------------------------------------------------

void throwingHost(CheckRun& run) {
    skipIfCompilersAreMixed(run);
    playInTrouble(run, {.trouble = Trouble::Throws, .moreOfEachCall = run.effort(0, 5)});
}

constexpr Check kExceptionChecks[] = {
    {"undescribed-clips", 2,
     "A clip that is open but was not described yet has no pictures and no sound: whatever is asked about them is "
     "answered with 99 and an error event (\"m_videoInfo is NULL\", \"m_audioInfo is NULL\"), and the clip works once "
     "it was described. Some editors ask in an order of their own.",
     undescribedClips},
    {"throwing-host", 3,
     "Whichever call that the plug-in makes of the host throws a standard exception, at any time: none leaves "
     "the plug-in. The call that it was in is answered with 99, and one error event tells the user under "
     "the title \"QuorvaneImporter: Internal error\" which call it was and what was thrown; frames fetched ahead fail "
     "with 99 when they are collected. All that was taken is given back, and the plug-in works again afterwards. An "
     "exception that reaches the editor ends it.",
     throwingHost, Company::Shared, kLongTimeLimit},
    {"exception-texts", 4,
     "The error event tells an exception's own text in full, whatever it holds: none (\"Unknown exception\" then), "
     "letters of any language, a hundred thousand of them, the signs of a format. It is all that a user can pass on.",
     exceptionTexts},
    {"exceptions-outside-the-start", 4,
     "Before the plug-in is started, and after its shutdown, an exception is answered with 99 like any other, but no "
     "error event is sent and no suite is asked for: the host did not lend any. A start that failed can be made again.",
     exceptionsOutsideTheStart},
    {"unreportable-exceptions", 5,
     "When the host fails to take the error event, the answer is 99 all the same. When it refuses the Error Suite, so "
     "that an exception cannot be told, the exception \"Could not acquire suite: 'Premiere Error Suite', ver: 3\" "
     "leaves the plug-in: silence would hide the failure. Once the host grants the suite, events are sent again.",
     unreportableExceptions},
    {"foreign-exceptions", 5,
     "What derives from no standard exception passes through the plug-in to the host that threw it, and is not told as "
     "the plug-in's own failure. On its way nothing is lost: frame buffers are given back, and the next call works.",
     foreignExceptions},
};

}  // namespace

std::span<const Check> exceptionChecks() { return kExceptionChecks; }

}  // namespace importhost::validate
