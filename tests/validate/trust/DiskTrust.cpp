#include "TrustRow.h"

constexpr TrustRow kDiskTrust[] = {
    {"disk-gone-for-good", "says-bad-file-for-unreadable-frame", "found imBadFile (2), wanted imFileReadFailed (33)"},
    {"disk-gone-for-good", "gives-up-after-unreadable-frame",
     "with the disk back: the answer is not what it was before"},
    {"disk-gone-for-good", "refuses-sound-after-read-error",
     "sound of stream 0 at 0: found imFileReadFailed (33), wanted imNoErr (0)"},
    {"disk-read-fails", "says-bad-file-for-unreadable-frame", "imBadFile (2) is not the answer to this failure"},
    {"disk-read-fails", "gives-up-after-unreadable-frame",
     "asked for again: found imFileReadFailed (33), wanted imNoErr (0)"},
    {"disk-read-fails", "delivers-unreadable-frames", "imNoErr (0) with other content than before"},
    {"disk-read-falls-short", "delivers-unreadable-frames", "imNoErr (0) with other content than before"},
    {"disk-seek-fails", "delivers-unreadable-frames", "imNoErr (0) with other content than before"},
    {"disk-size-fails", "gives-up-after-bad-description", "asked for again: found imBadFile (2), wanted imNoErr (0)"},
    {"disk-open-fails", "gives-up-after-failed-open",
     "opening, asked for again: found imBadFile (2), wanted imNoErr (0)"},
    {"disk-open-fails", "says-other-error-for-failed-open", "imOtherErr (5) is not the answer to this failure"},
    {"file-shrinks-while-open", "delivers-unreadable-frames", "was answered with imNoErr (0) and is not what it was"},
    {"file-shrinks-while-open", "gives-up-after-unreadable-frame",
     "the file is whole again: frames that cannot be read: found"},
    {"file-vanishes-while-open", "opens-a-clip-once", "the file is back: it does not open"},
    {"file-changes-while-quiet", "only-pretends-to-open-again",
     "while quiet the file is deleted: the answer to opening it again: found imNoErr (0), wanted imBadFile (2)"},
    {"file-changes-while-quiet", "delivers-unreadable-frames", "was answered with imNoErr (0) and is not what it was"},
    {"file-changes-while-quiet", "gives-up-after-unreadable-frame",
     "the file that was deleted is as before: frames that cannot be read: found"},
};

std::span<const TrustRow> diskTrust() { return kDiskTrust; }
