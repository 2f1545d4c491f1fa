#include "TrustRow.h"

constexpr TrustRow kCodecTrust[] = {
    {"codec-given-back", "keeps-a-codec-instance", "what the codec holds after the clip was closed: found 2 instances"},
    {"codec-fails-for-good", "says-other-error-for-bad-frame",
     "quorvane_decompress_begin fails at every call: frame 0 in PrPixelFormat_YUYV_422_8u_601: found imOtherErr (5), "
     "wanted imBadCompression (8)"},
    {"codec-fails-for-good", "says-other-error-for-bad-description",
     "quorvane_open fails at every call: the description of stream 0: found imOtherErr (5), wanted imBadFile "
     "(2)"},
    {"codec-fails-for-good", "gives-up-after-bad-frame",
     "with the codec well again: frame 0 in PrPixelFormat_YUYV_422_8u_601: found imBadCompression (8), wanted imNoErr"},
    {"codec-fails-once", "gives-up-after-bad-frame",
     "quorvane_decompress_begin fails at call 1: frame 0 in PrPixelFormat_YUYV_422_8u_601, asked for again: found "
     "imBadCompression (8), wanted imNoErr (0)"},
    {"codec-fails-once", "gives-up-after-bad-description",
     "description of stream 0, asked for again: found imBadFile (2), wanted imNoErr (0)"},
    {"codec-fails-once", "leaks-codec-on-bad-frame",
     "quorvane_decompress fails at call 1: calls of quorvane_close: found"},
    {"codec-fails-once", "leaks-codec-on-bad-description",
     "what the codec holds after the clip was closed: found 1 instances"},
    {"codec-fails-once", "says-other-error-for-bad-frame", "imOtherErr (5) is not the answer to this failure"},
    {"codec-tells-unknown-type", "calls-an-unknown-type-a-bad-file",
     "the description of a stream of type 9999: found imBadFile (2), wanted imOtherErr (5)"},
    {"codec-tells-unknown-type", "ahead-calls-an-unknown-type-a-bad-file",
     "the asynchronous importer of a stream of type 9999: found imBadFile (2), wanted imOtherErr (5)"},
    {"codec-tells-other-sizes", "delivers-frames-of-no-size",
     "decoding begins with 49 x 32: frame 0: it was delivered, but not with its pixels"},
    {"codec-tells-other-sizes", "gives-up-after-other-size", "frame 0 is not what it was before: imOtherErr (5)"},
    {"codec-is-slow", "waits-when-announcing", "announcing a frame waited until it was decoded"},
    {"codec-is-slow", "never-flushes", "it did not wait for the frame that was being decoded"},
    {"codec-fails-while-logging", "starts-only-with-a-codec", "imInit was answered with imOtherErr (5)"},
};

std::span<const TrustRow> codecTrust() { return kCodecTrust; }
