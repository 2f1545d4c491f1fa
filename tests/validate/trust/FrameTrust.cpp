#include "TrustRow.h"

namespace {

constexpr TrustRow kFrameTrust[] = {
    {"frame-first-and-last", "refuses-last-frame",
     "plain.avi: frame 24 in yuy2 of 25 is not delivered: imFrameNotFound (28)"},
    {"frame-true-picture", "flips-pictures", "plain.avi: frame 0 in yuy3, pixel 0 from the left, "},
    {"frame-true-picture", "delivers-the-next-frame", "plain.avi: frame 0 in yuy3, pixel "},
    {"frame-every-pixel", "leaves-out-a-row",
     "96 bytes of pixels were not delivered (the first in row 31 of memory, byte 0)"},
    {"frame-every-pixel", "writes-past-the-frame", "A frame (yuy2, 48 x 32) was overrun."},
    {"frame-every-pixel", "adds-to-what-the-buffer-held", "1 bytes of pixels depend on what the buffer held before"},
    {"frame-repeats", "adds-to-what-the-buffer-held", "frame 0 in yuy2 for the second time: found a picture"},
    {"frame-repeats", "draws-into-the-latest-frame",
     "the frame asked for as number 1 after the following ones: found a picture"},
    {"frame-repeats", "refuses-last-frame", "frame 24 in yuy2 is not delivered: imFrameNotFound (28)"},
    {"frame-outside", "repeats-last-frame-past-end", "where the clip has ended at 254016000000: found a picture"},
    {"frame-outside", "takes-negative-times-for-the-first", "the answer 1 frame(s) before the start: found a picture"},
    {"frame-outside", "refuses-every-negative-time",
     "the answer at tick -1, less than a frame before the start: found imFrameNotFound (28), wanted a picture"},
    {"frame-dropped", "refuses-empty-frames",
     "dropped.avi: frame 5, which is empty and stands for frame 4: found imFrameNotFound (28)"},
    {"frame-dropped", "shows-the-first-for-empty-frames",
     "dropped.avi: frame 5, which is empty and stands for frame 4: found a picture"},
    {"frame-sizes", "takes-any-size",
     "frame 0, asked for at 49 x 32 of a clip of 48 x 32: found a picture (yuy2, 48 x 32"},
    {"frame-sizes", "refuses-size-zero", "frame 0, asked for at 0 x 0: found imOtherErr (5), wanted a picture"},
    {"frame-format-choice", "takes-the-second-format", "the answer to yuy2 before yuy3: found a picture (yuy3"},
    {"frame-format-choice", "takes-no-format-for-uyvy", "the answer to no format at all: found a picture (uyvy"},
    {"frame-format-choice", "answers-unknown-formats", "the answer to the unknown format xxxx: found a picture (uyvy"},
    {"frame-format-choice", "stays-with-the-first-format", "asked for v210, got one in yuy2"},
    {"frame-boundaries", "rounds-times", "one tick before the start of frame 5 (tick 50803200000): found a picture"},
    {"frame-boundaries", "counts-times-exactly", "eleven.avi: at the start of frame 2 (tick 46184727272): found"},
    {"frame-seeks", "cannot-go-back", "in yuy2, going backwards: found a picture"},
    {"frame-strides", "slants-odd-rows", "in yuy2 with a host of odd-rows: found a picture"},
    {"frame-two-clips", "mixes-clips", "while other clips are played: found a picture"},
    {"frame-after-quiet", "forgets-pictures-when-quieted",
     "frame 0 in yuy2 after quiet and reopening: found imFileReadFailed (33)"},
    {"frame-format-switch", "is-late-with-another-format", "after another format: found a picture"},
    {"frame-rates", "counts-times-exactly", "11/1 frames a second, 254016000000 ticks: at the start of frame"},
    {"frame-rates", "describes-no-rate-as-it-is",
     "0/1 frames a second, 254016000000 ticks: the rate that the clip is described with: found 0/0, wanted 30/1"},
};

}  // namespace

std::span<const TrustRow> frameTrust() { return kFrameTrust; }
