// A codec library that fails, answers wrongly or is slow. The codec at hand must be one that can be made to.
#include "importhost/validate/checks/codec/CodecTopics.h"
#include "importhost/validate/framework/Groups.h"

namespace importhost::validate {

namespace {

// A playthrough of a clip with big pictures takes seconds, and the time is looked at between them only.
constexpr std::chrono::seconds kLongTimeLimit{180};

constexpr Check kCodecChecks[] = {
    {"codec-given-back", 1,
     "After a clip was opened, described, asked for frames at once and ahead of time, and closed, every codec instance "
     "is closed and every initialisation of the codec library is paired with a close; no two calls on one instance "
     "overlap, and output records are set up before each call. An editor that imports hundreds of clips would run out "
     "of decoders otherwise.",
     codecGivenBack},
    {"codec-fails-for-good", 2,
     "One codec function at a time fails at every call. Without codec instance or stream query the description of "
     "stream 0 and the asynchronous importer are answered with imBadFile (2) and frames with 99, because nothing is "
     "described; without decode session or decoding, frames are answered with imBadCompression (8) and asynchronous "
     "ones with aiUnknownError (2); failing releases, texts and parameters change nothing. Sound goes on. Nothing "
     "leaks, and all is well again when the codec is.",
     codecFailsForGood, Company::Shared, kLongTimeLimit},
    {"codec-fails-once", 3,
     "Each codec function fails at its first, second, third ... call while a clip is opened, described, played, played "
     "ahead, quieted, opened again and closed. The call that was struck is answered with imBadFile (2) when it "
     "describes and with imBadCompression (8) or aiUnknownError (2) when it decodes, the same call works when it is "
     "made again, all others are answered as ever, and nothing leaks. An editor's user sees one broken frame at most, "
     "not a clip that is lost until the next start.",
     codecFailsOnce, Company::Shared, kLongTimeLimit},
    {"codec-tells-unknown-type", 3,
     "The codec describes a stream of a type that nobody knows: stream 0 is answered with imOtherErr (5) and so is its "
     "asynchronous importer. When the codec describes it rightly again, the same clip opens. A newer codec would make "
     "the editor import garbage otherwise.",
     codecTellsUnknownType},
    {"codec-tells-other-sizes", 4,
     "The codec states another size than the frames have, when it describes the stream or when it begins to decode. No "
     "frame is delivered that was decoded to a larger size than its own, nothing is written outside a frame buffer, "
     "requests are answered with imOtherErr (5) or imBadCompression (8), and all is well once the codec is right.",
     codecTellsOtherSizes},
    {"codec-is-slow", 4,
     "While the codec decodes one announced frame and does not come back, frames are announced without waiting, the "
     "clip itself delivers frames, and other clips open; collecting and flushing wait for the decoder and then give "
     "what they must. An editor's window would freeze otherwise.",
     codecIsSlow, Company::Shared, kLongTimeLimit},
    {"codec-fails-while-logging", 5,
     "The diagnostic log is on and the codec fails when it is asked for what the log tells of it: the importer starts "
     "all the same. A support engineer would otherwise get no log of exactly the machines that have a problem.",
     codecFailsWhileLogging, Company::Alone},
};

}  // namespace

std::span<const Check> codecChecks() { return kCodecChecks; }

}  // namespace importhost::validate
