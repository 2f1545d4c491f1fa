// Pictures announced ahead: the table. Each group of checks is in a file of its own.
#include "importhost/validate/checks/async/AsyncFrameChecks.h"
#include "importhost/validate/checks/async/AsyncThreadChecks.h"
#include "importhost/validate/framework/Groups.h"

namespace importhost::validate {

namespace {

// Every format of every file.
constexpr std::chrono::seconds kLongTimeLimit{180};

constexpr Check kAsyncChecks[] = {
    {"async-equals-sync", 1,
     "A frame that was announced and then collected is the picture that the importer draws at once, byte for byte, in "
     "every format that it offers; one that cannot be drawn at once is not delivered (aiUnknownError). Else playback "
     "shows what a still picture does not.",
     asyncEqualsSync, Company::Shared, kLongTimeLimit},
    {"async-unannounced", 2,
     "A frame that was never announced, or was collected before, is delivered all the same. Editors collect what they "
     "forgot to announce.",
     asyncUnannounced},
    {"async-dropped-frames", 2,
     "Frames that were announced and not collected are given back by a flush and by the close, finished or not, and "
     "the importer goes on after a flush. Else memory fills up each time that playback is stopped.",
     asyncDroppedFrames},
    {"async-unknown-selectors", 2,
     "Asynchronous selectors that this importer does not know, negative ones too, are answered with aiUnsupported "
     "whatever comes with them, and closing no importer with aiNoError; what was announced stays announced.",
     asyncUnknownSelectors},
    {"async-orders", 3,
     "Frames are announced forward, backward and shuffled, and collected in another order: each collection gets the "
     "frame that it names. An editor plays backward and jumps.",
     asyncOrders},
    {"async-duplicates", 3,
     "A frame that was announced twice is delivered twice, and dropped by a flush after it was delivered once.",
     asyncDuplicates},
    {"async-cancel", 3,
     "Cancelling is answered with aiUnsupported, and the frame is still delivered when it is collected.",
     asyncCancel},
    {"async-out-of-range", 3,
     "Announcing a time before the clip or behind its end is accepted (aiNoError); collecting it fails "
     "(aiUnknownError) and gives no frame. Frames within the clip are not disturbed. Editors read ahead past the end.",
     asyncOutOfRange},
    {"async-outlives-its-clip", 3,
     "An asynchronous importer goes on while the clip that it was made for is quieted and closed. Editors close a "
     "clip's importers in any order.",
     asyncOutlivesItsClip},
    {"async-crowds", 4,
     "Hundreds of frames are announced before the first is collected; all can be collected, and a flush gives back "
     "what was not. A fast editor on a slow disk does this.",
     asyncCrowds},
    {"async-several-importers", 4,
     "Several asynchronous importers for one clip, and for several clips, each deliver their own clip's frames; "
     "flushing or closing one does not touch the others. A sequence with a clip on many tracks needs this.",
     asyncSeveralImporters},
    {"async-unloads", 4,
     "After the close of an importer with frames pending, and the shutdown, the library leaves the process, and no "
     "thread of it runs on. A thread left behind crashes the editor when it quits.",
     asyncUnloads},
    {"async-announcing-does-not-wait", 5,
     "An announced frame is decoded without being collected, and announcing others does not wait for it. Else reading "
     "ahead is slower than not doing it.",
     asyncAnnouncingDoesNotWait},
    {"async-flush-waits", 5,
     "A flush returns when the decodes that were running have ended, and not before: the host may take away what they "
     "use.",
     asyncFlushWaits},
    {"async-close-waits", 5,
     "A close that comes while another thread collects a frame waits for it: the frame is delivered, and then the "
     "importer ends. Editors close a sequence in the midst of playback.",
     asyncCloseWaits},
    {"async-threads", 5,
     "Several threads announce and collect on one importer, and on several, while others flush and the clip itself "
     "draws frames: each collection gets the frame that it names.",
     asyncThreads},
    {"async-first-touch", 5,
     "Two threads open, describe and fetch from one file at the same moment, again and again, and get the same first "
     "frame. What is set up at the first use must be set up once.",
     asyncFirstTouch},
};

}  // namespace

std::span<const Check> asyncChecks() { return kAsyncChecks; }

}  // namespace importhost::validate
