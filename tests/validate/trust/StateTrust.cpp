#include "TrustRow.h"

constexpr TrustRow kStateTrust[] = {
    {"random-calls", "mixes-up-clips", "found imNoErr (0), wanted imFrameNotFound (28)"},
    {"random-calls", "forgets-the-stream", "sound without sound: found imNoErr (0), wanted malUnknownError (99)"},
    {"random-calls", "starts-sound-anew", "is not what it was before"},
    {"random-calls", "collects-the-first-frame", "is another one when it is collected"},
    {"random-calls", "works-once", "opening: found imBadFile (2), wanted imNoErr (0)"},
    {"random-calls", "keeps-a-suite-at-the-second-start", "suites held after imShutdown: found 1, wanted 0"},
    {"random-calls-with-refusals", "gives-up-after-bad-frame",
     "asked for again: found imBadCompression (8), wanted imNoErr (0)"},
    {"random-calls-with-refusals", "delivers-unreadable-frames", "is not what it was before"},
    {"random-calls-with-refusals", "gives-up-after-failed-open", "found imBadFile (2), wanted imNoErr (0)"},
    {"random-calls-with-refusals", "leaks-codec-on-bad-frame",
     "what the codec holds after all clips were closed: found"},
};

std::span<const TrustRow> stateTrust() { return kStateTrust; }
