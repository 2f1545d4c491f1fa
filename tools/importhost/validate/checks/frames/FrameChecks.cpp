// The table of the checks of pictures; they are in the files beside this one.
#include "importhost/validate/checks/frames/FrameParts.h"
#include "importhost/validate/framework/Groups.h"

namespace importhost::validate {

namespace {

constexpr Check kFrameChecks[] = {
    {"frame-first-and-last", 1,
     "The first and the last frame of every clip, and frames between, are delivered in the format and the size that "
     "was asked for. A frame that is not delivered is black in the editor, or it stops playing there. For a frame of a "
     "user's file whose data cannot be read or decoded that is a warning.",
     frameFirstAndLast},
    {"frame-true-picture", 1,
     "The pictures of the program's own samples arrive as they were written, component by component, the right way "
     "up, for every compressed type. A user sees wrong colours, an upside-down picture or the frame beside the right "
     "one.",
     frameTruePicture},
    {"frame-every-pixel", 2,
     "In every packed format that is offered all whole groups of pixels of a frame are written and do not depend on "
     "what the host's buffer held before; in every format nothing is written past the frame. A user sees lines of an "
     "earlier picture, or the editor crashes.",
     frameEveryPixel},
    {"frame-repeats", 2,
     "The same frame asked for twice is the same picture in every format, and frames that the editor still holds do "
     "not change when others are asked for. Pictures would flicker, and the editor's cache would be wrong.",
     frameRepeats},
    {"frame-outside", 2,
     "A time at or behind the end of a clip, or a frame or more before its start, is answered with imFrameNotFound "
     "and without a frame; less than a frame before the start stands for the first one. Editors ask there when clips "
     "are trimmed.",
     frameOutside},
    {"frame-dropped", 2,
     "An empty frame is answered with the nearest one before it that has data, else with the nearest one after it; a "
     "clip of empty frames alone with imFrameNotFound. Recorders write empty frames where they dropped one; users "
     "would see gaps.",
     frameDropped},
    {"frame-sizes", 3,
     "A width or height of 0 stands for the clip's own; any other size is answered with imOtherErr and without a "
     "frame. A frame of another size would be scaled wrongly or overrun.",
     frameSizes},
    {"frame-format-choice", 3,
     "Of several formats the first is delivered; no format is answered with imOtherErr, one that the plug-in does "
     "not know with 99, in both cases without a frame; and a frame never comes in another format than the one asked "
     "for. Wrong formats show as wild colours.",
     frameFormatChoice},
    {"frame-boundaries", 3,
     "One tick before a frame's start still belongs to the frame before, the start and the tick behind it to the "
     "frame, counted in frame durations cut to whole ticks. Off by one here, cuts show a frame of the wrong shot.",
     frameBoundaries},
    {"frame-seeks", 3,
     "Frames asked for backwards and in random order are the same pictures as in a row. Otherwise scrubbing shows "
     "other pictures than playing.",
     frameSeeks},
    {"frame-strides", 3,
     "The pixels are the same whatever the host puts between rows: padding to 128 bytes, none, or an odd number of "
     "bytes. A user sees a slanted picture.",
     frameStrides},
    {"frame-two-clips", 3,
     "Frames of several open clips, asked for in turns, are the same as each clip's alone. Timelines with several "
     "tracks would show one clip's pictures in another.",
     frameTwoClips},
    {"frame-after-quiet", 3,
     "After a clip was quieted and opened again it delivers the same frames, described again or not. Editors quiet "
     "clips whenever the user works in another program.",
     frameAfterQuiet},
    {"frame-format-switch", 4,
     "A frame is the same after frames in other formats as in a row of its own format. Editors mix formats when one "
     "clip is played, exported and shown as an icon.",
     frameFormatSwitch},
    {"frame-rates", 4,
     "Clips of exact and inexact rates, of a million frames a second and of a frame a year, and clips that state no "
     "rate (taken for 30) deliver the right frame around each boundary; a rate that cannot be counted in ticks is "
     "answered in some way and crashes nothing.",
     frameRates},
};

}  // namespace

std::span<const Check> frameChecks() { return kFrameChecks; }

}  // namespace importhost::validate
