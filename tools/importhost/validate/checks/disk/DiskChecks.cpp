// A disk that fails: through the plug-in's own calls of the system, and by files that change under it.
#include "importhost/validate/checks/disk/DiskTopics.h"
#include "importhost/validate/framework/Groups.h"

namespace importhost::validate {

namespace {

constexpr Check kDiskChecks[] = {
    {"disk-gone-for-good", 2,
     "From some moment on the disk delivers nothing, as when a network drive goes away: frames are answered with "
     "imFileReadFailed (33), asynchronous ones with aiUnknownError (2), sound with imNoErr (0) and silence, the "
     "description with imBadFile (2). When the disk is back, the same open clip works again. An editor's user would "
     "have to start the editor again otherwise.",
     diskGoneForGood},
    {"file-shrinks-while-open", 2,
     "The file loses its second half, and then all of it, while it is open: frames that are still there are "
     "delivered, the others are answered with imFileReadFailed (33), sound goes over into silence. What the system "
     "refuses to do to an open file is played to the plug-in.",
     fileShrinksWhileOpen},
    {"file-vanishes-while-open", 2,
     "The file is deleted or renamed while it is open, if the system lets it: the open clip goes on, a new "
     "asynchronous importer for it is refused with imBadFile (2), and so is opening the path again. When the file is "
     "back, it opens.",
     fileVanishesWhileOpen},
    {"file-changes-while-quiet", 3,
     "While the clip is quiet its file is deleted, cut, emptied or replaced by one that is no clip. Opening it again "
     "and asking for frames gives imBadFile (2) or imFileReadFailed (33), never a frame of something else's bytes that "
     "is not there; with the old file back the clip works again. Editors quieten every clip when they go to the "
     "background.",
     fileChangesWhileQuiet},
    {"disk-read-fails", 3,
     "Each read in turn fails while a clip is opened, described, played, played ahead, quieted, opened again and "
     "closed. A frame that was struck is answered with imFileReadFailed (33), an asynchronous one with aiUnknownError "
     "(2), sound with imNoErr and silence from there, a description with imBadFile (2) or with what could be read. "
     "The same call works when it is made again. One bad sector costs an editor's user one frame.",
     diskReadFails},
    {"disk-read-falls-short", 3,
     "Each read in turn gives half of what was asked for, with the same demands as for one that fails. A half-read "
     "frame must not be decoded together with what an earlier one left in the buffer.",
     diskReadFallsShort},
    {"disk-seek-fails", 4,
     "Each seek in turn fails, with the same demands: nothing may be read from the place before and be taken for what "
     "was asked for.",
     diskSeekFails},
    {"disk-size-fails", 4,
     "Each question for the file's size fails in turn, with the same demands.",
     diskSizeFails},
    {"disk-open-fails", 2,
     "Opening the file fails, at the first opening, for the asynchronous importer, and when a quiet clip is opened "
     "again: imBadFile (2), and the next attempt works.",
     diskOpenFails},
};

}  // namespace

std::span<const Check> diskChecks() { return kDiskChecks; }

}  // namespace importhost::validate
