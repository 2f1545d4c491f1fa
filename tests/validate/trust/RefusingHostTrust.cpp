#include "TrustRow.h"

constexpr TrustRow kRefusingHostTrust[] = {
    {"refused-suites", "needs-the-cache-suite",
     "without the 'Premiere PPix Cache Suite', the description of stream 0: answered with imOtherErr (5), although it "
     "can do without that suite"},
    {"refused-suites", "answers-exceptions-otherwise",
     "without the 'Premiere PPix Creator Suite', frame 0 in PrPixelFormat_YUYV_422_8u_601: the answer: found "
     "imOtherErr (5), wanted malUnknownError (99)"},
    {"refused-suites", "tells-nothing",
     "frame 0 in PrPixelFormat_YUYV_422_8u_601: error events sent to the host: found 0, wanted 1"},
    {"refused-suites", "tells-without-the-reason",
     "wanted 'FATAL: Unhandled exception during [imGetSourceVideo] (47): Could not acquire suite: 'Premiere PPix "
     "Creator Suite', ver: 1'"},
    {"refused-suites", "never-recovers",
     "frame 0 in PrPixelFormat_YUYV_422_8u_601: tried again when it was granted: found malUnknownError (99), wanted "
     "imNoErr (0)"},
    {"refused-suites", "takes-another-version",
     "without the 'Premiere PPix Creator Suite' of version 1, the description of stream 0: takes version 2 of it "
     "instead"},
    {"failing-host-functions", "fails-with-bad-file",
     "PPixCreator.CreatePPix fails at call 1 of 10, frame 0 in PrPixelFormat_YUYV_422_8u_601: answered with imBadFile "
     "(2) instead of imOtherErr (5)"},
    {"failing-host-functions", "hides-failed-frames",
     "frame 0 in PrPixelFormat_YUYV_422_8u_601: answered with imNoErr (0) instead of a failure, but what was "
     "delivered differs"},
    {"failing-host-functions", "keeps-a-suite-after-a-failure",
     "the shutdown: after the shutdown: The suite 'Premiere Time Suite' version 1 was acquired"},
    {"failing-host-functions", "never-recovers",
     "the list of subtypes: tried again when the host was in order: found imMemErr (4), wanted imNoErr (0)"},
    {"failing-host-functions", "asks-for-suites-once",
     "Basic.AcquireSuite fails at call 1 of 15, the description of stream 0: answered with imOtherErr (5) instead of "
     "imNoErr (0), although nothing that it needs is missing"},
    {"failing-host-functions", "keeps-failed-frames", "was never disposed"},
    {"failing-host-functions", "trusts-new-memory", "Memory.newPtr fails at call 1 of 1, the list of subtypes",
     "CRASH"},
    {"host-profiles", "takes-rows-for-even",
     "plain.avi, host 'odd-rows', frame 0 in PrPixelFormat_YUYV_422_8u_601: the answer is not what it was before"},
    {"host-profiles", "knows-one-interface", "plain.avi, host 'editor-14': the plug-in does not open it"},
    {"odd-ticks", "assumes-usual-ticks",
     "600 ticks a second: frame 1 at tick 24 is another picture than with usual ticks"},
    {"odd-ticks", "divides-by-the-ticks", "no ticks", "CRASH"},
    {"suites-run-out", "answers-exceptions-otherwise",
     "Basic.AcquireSuite fails from call 1 of 15 on, the description of stream 0: answered with imOtherErr (5) instead "
     "of malUnknownError (99)"},
    {"suites-run-out", "never-recovers",
     "tried again when the host was in order: found malUnknownError (99), wanted imNoErr (0)"},
};

std::span<const TrustRow> refusingHostTrust() { return kRefusingHostTrust; }
