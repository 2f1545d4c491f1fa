#include "TrustRow.h"

namespace {

constexpr char kAnotherPicture[] = "is another picture than the one that is drawn at once";

constexpr TrustRow kAsyncTrust[] = {
    {"async-equals-sync", "async-spoils-pictures", kAnotherPicture},
    {"async-equals-sync", "async-is-promised-in-vain",
     "plain.avi: the asynchronous importer that it promises: imUnsupported (3)"},
    {"async-unannounced", "async-needs-announcements",
     "plain.avi: collecting frame 0 as yuy2: found aiFrameNotFound (3), wanted aiNoError (0)"},
    {"async-dropped-frames", "async-keeps-flushed-frames",
     "frame buffers that the plug-in holds after a flush of finished frames: found 4, wanted 0"},
    {"async-dropped-frames", "async-keeps-everything-at-the-close",
     "frame buffers that the plug-in holds after the close: found "},
    {"async-dropped-frames", "async-fails-after-a-flush",
     "collecting frame 0 as yuy2: found aiUnknownError (2), wanted aiNoError (0)"},
    {"async-unknown-selectors", "async-answers-every-selector",
     "asynchronous selector -1: found aiNoError (0), wanted aiUnsupported (1)"},
    {"async-orders", "async-delivers-in-turn", kAnotherPicture},
    {"async-duplicates", "async-refuses-what-is-pending",
     "announcing frame 0 as yuy2: found aiUnknownError (2), wanted aiNoError (0)"},
    {"async-duplicates", "async-needs-announcements", "found aiFrameNotFound (3), wanted aiNoError (0)"},
    {"async-cancel", "async-cancels",
     "cancelling frame 0 as yuy2: found aiNoError (0), wanted aiUnsupported (1)"},
    {"async-out-of-range", "async-refuses-times-outside", "found aiUnknownError (2), wanted aiNoError (0)"},
    {"async-out-of-range", "async-delivers-the-first-for-any", "found aiNoError (0), wanted aiUnknownError (2)"},
    {"async-outlives-its-clip", "async-ends-with-its-clip",
     "plain.avi, the clip closed: collecting frame 24 as yuy2: found aiUnknownError (2), wanted aiNoError (0)"},
    {"async-crowds", "async-refuses-crowds", "found aiUnknownError (2), wanted aiNoError (0)"},
    {"async-crowds", "async-keeps-flushed-frames", "frame buffers that the plug-in holds after the flush of a crowd"},
    {"async-several-importers", "async-mixes-importers", kAnotherPicture},
    {"async-unloads", "async-leaves-a-thread", "unloading", "CRASH"},
    {"async-unloads", "async-keeps-everything-at-the-close",
     "The suite 'Premiere Audio Suite' version 1 was acquired"},
    {"async-announcing-does-not-wait", "async-flushes-before-announcing",
     "announcing waits until the decode of another frame has ended"},
    {"async-announcing-does-not-wait", "async-decodes-when-collected",
     "an announced frame is not decoded before it is collected"},
    {"async-flush-waits", "async-keeps-flushed-frames", "flushing returns while a decode is running"},
    {"async-close-waits", "async-never-closes", "closing returns while a frame is being collected"},
    {"async-threads", "async-mixes-threads", kAnotherPicture},
    {"async-first-touch", "opens-one-at-a-time", "opened by two threads at once: opening imBadFile (2)"},
};

}  // namespace

std::span<const TrustRow> asyncTrust() { return kAsyncTrust; }
