#include "TrustRow.h"

namespace {

constexpr TrustRow kAudioTrust[] = {
    {"audio-delivered", "leaves-out-the-last-sample",
     "plain.avi, stream 0: 2000 samples at 0: channel 1, sample 1999 was not delivered"},
    {"audio-delivered", "refuses-the-last-sample",
     "the answer to the last sample alone: found imFileReadFailed (33), wanted imNoErr (0)"},
    {"audio-true-samples", "is-one-sample-late", "plain.avi, stream 0: 4000 samples at 0: channel 0, sample "},
    {"audio-true-samples", "swaps-channels", "plain.avi, stream 0: 4000 samples at 0: channel 0, sample "},
    {"audio-past-the-end", "refuses-past-the-end",
     "500 samples at 48000, behind the end at 48000: found imFileReadFailed (33), wanted imNoErr (0)"},
    {"audio-past-the-end", "holds-the-last-sample-past-the-end",
     "257 samples at 47993, across the end at 48000: channel 0, sample 7 of 257: found "},
    {"audio-exact-buffers", "writes-past-the-buffer", "A channel buffer of 1 samples was overrun."},
    {"audio-exact-buffers", "leaves-out-the-last-sample",
     "1 samples at 0: channel 1, sample 0 of 1: nothing was delivered, wanted 0.875"},
    {"audio-zero-size", "refuses-no-samples",
     "the answer to no samples at 0: found imOtherErr (5), wanted imNoErr (0)"},
    {"audio-zero-size", "forgets-where-no-samples-were",
     "30 samples from where no samples at 20 were asked for: channel 0, sample 0 of 30: found"},
    {"audio-zero-size", "writes-past-the-buffer", "A channel buffer of 0 samples was overrun."},
    {"audio-streams", "forgets-streams-once-left", "400 samples at 21650 of stream 0, selected again: channel 0"},
    {"audio-continues", "starts-anew-at-negative-positions", ", where the import has come to "},
    {"audio-continues", "counts-negative-positions-back", " since it jumped to "},
    {"audio-partitions", "repeats-a-sample-at-joins", ", imported in parts: channel 0, sample "},
    {"audio-seeks", "cannot-go-back-in-sound", ", going backwards: channel 0, sample "},
    {"audio-after-quiet", "forgets-sound-when-quieted",
     "1000 samples at 0 after quiet and reopening: channel 0, sample 0 of 1000: found 0"},
    {"audio-after-quiet", "forgets-the-position-when-quieted",
     "samples at position -1 after quiet and reopening: channel 0"},
    {"audio-no-stream", "silences-streams-that-are-none",
     "the sound of stream 1, which is none: channel 0, sample 0 of 50: found 0"},
    {"audio-two-clips", "shares-the-position", "while other clips are played: channel 0, sample "},
    {"audio-beside-frames", "loses-a-sample-after-a-frame", " after frame "},
    {"audio-large-request", "cuts-big-requests", ", asked for at once: channel 0, sample "},
    {"audio-every-partition", "repeats-a-sample-after-short-requests",
     "1 samples at 4, imported in parts: channel 0, sample 0 of 1: found 0.875, wanted -0.875"},
};

}  // namespace

std::span<const TrustRow> audioTrust() { return kAudioTrust; }
