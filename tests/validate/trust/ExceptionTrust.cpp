#include "TrustRow.h"

namespace {

constexpr TrustRow kExceptionTrust[] = {
    {"undescribed-clips", "answers-exceptions-otherwise",
     "plain.avi, not described: the answer to imAnalysis: found imOtherErr (5), wanted malUnknownError (99)"},
    {"undescribed-clips", "tells-nothing",
     "plain.avi, not described: error events sent to the host: found 0, wanted 1"},
    {"undescribed-clips", "never-recovers", "plain.avi, described late: the first frame: found malUnknownError (99)"},
    {"throwing-host", "lets-exceptions-out",
     "an exception left the plug-in instead of malUnknownError (99) after the host threw an exception"},
    {"throwing-host", "async-lets-exceptions-out",
     "collecting frame 0: an exception left the plug-in instead of malUnknownError (99)"},
    {"throwing-host", "swallows-exceptions",
     "answered with imNoErr (0) instead of malUnknownError (99) after the host threw an exception"},
    {"throwing-host", "tells-nothing", "error events sent to the host: found 0, wanted 1"},
    {"throwing-host", "tells-twice", "error events sent to the host: found 2, wanted 1"},
    {"throwing-host", "tells-as-a-warning", "the type of the error event: found 2, wanted 3"},
    {"throwing-host", "tells-under-another-title",
     "the title of the error event: found An importer, wanted QuorvaneImporter: Internal error"},
    {"throwing-host", "tells-without-the-reason", "the text of the error event: found 'FATAL: "},
    {"throwing-host", "never-recovers",
     "tried again when the host was in order: found malUnknownError (99), wanted imNoErr (0)"},
    {"throwing-host", "keeps-failed-frames", "was never disposed"},
    {"exception-texts", "tells-a-short-text", "an exception with the text 'rrrrrrrrrrrrrrrrrrrr': the text of the"},
    {"exception-texts", "tells-in-plain-letters", "(54): ? ? "},
    {"exception-texts", "tells-without-the-reason", "(54): Unknown exception'"},
    {"exceptions-outside-the-start", "tells-at-any-time", "after the shutdown: suites asked for: found 1, wanted 0"},
    {"exceptions-outside-the-start", "answers-exceptions-otherwise",
     "after the shutdown: the answer to the call: found imOtherErr (5), wanted malUnknownError (99)"},
    {"unreportable-exceptions", "catches-everything",
     "the host refuses the Error Suite: answered with malUnknownError (99), and the exception did not reach the host"},
    {"unreportable-exceptions", "tells-nothing",
     "the host grants it again: error events sent to the host: found 0, wanted 1"},
    {"foreign-exceptions", "catches-everything",
     "the host throws a number: answered with malUnknownError (99), and the exception did not reach the host"},
    {"foreign-exceptions", "keeps-failed-frames", "was never disposed"},
};

}  // namespace

std::span<const TrustRow> exceptionTrust() { return kExceptionTrust; }
