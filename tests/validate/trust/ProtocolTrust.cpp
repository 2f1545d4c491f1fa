#include "TrustRow.h"

namespace {

constexpr TrustRow kProtocolTrust[] = {
    // --- Before any file ---
    {"formats-end", "offers-formats-for-ever", "the answer that ends the list of import formats: found imNoErr (0)"},
    {"formats-end", "counts-formats-from-below", "the answer to import format -1: found imNoErr (0)"},
    {"format-facts", "changes-its-name", "the name: found Quorvane aVI, wanted Quorvane AVI"},
    {"subtype-list", "lists-a-subtype-twice", "subtype AR8Q is listed twice"},
    {"subtype-list", "gives-names-without-an-end", "subtype AR8Q has a name without an end"},
    {"subtype-list", "lists-by-file-type", "the list for file type 0: found AR8Q 'quorvane"},
    {"start-answers", "has-no-priority", "the priority: found 0, wanted 200"},
    {"start-answers", "is-of-an-old-version",
     "the answer to imGetSupports8: found imUnsupported (3), wanted malSupports8"},
    {"start-in-any-order", "keeps-the-suite-of-each-init", "suites held after imInit came twice: found 2, wanted 1"},

    // --- Opening ---
    {"good-files-open", "refuses-every-file", "plain.avi: the plug-in does not open it: imBadFile (2)"},
    {"good-files-open", "keeps-the-handle", "plain.avi: its file handle is still set after closing"},
    {"open-refuses-no-file", "takes-every-file", "a missing file: the answer to opening it: found imNoErr (0)"},
    {"open-refuses-no-file", "keeps-refused-files", "a folder: private data was given for a file that is not open"},
    {"foreign-files", "describes-everything", "text.avi: the answer to describing it: found imNoErr (0)"},
    {"foreign-files", "writes-what-it-refuses", "empty.avi: bytes 162 of the record were written"},
    {"damaged-files", "has-its-own-word-for-damage",
     "sound-only.avi: the answer to what cannot be described: found imBadHeader (29), wanted imBadFile (2)"},
    {"damaged-files", "tells-half-of-the-rates", "index-behind-end.avi: data rates: found 12, wanted 25"},
    {"locked-file", "takes-every-file", "while another program locks it: the answer to opening it: found imNoErr (0)"},
    {"open-any-path", "reads-ascii-only",
     "\xD0\xA4\xD0\xB8\xD0\xBB\xD1\x8C\xD0\xBC.avi: the answer to opening it: found imBadFile (2)"},
    {"open-any-path", "reads-short-paths-only",
     "a path of 240 characters: the answer to opening it: found imBadFile (2), wanted imNoErr (0)"},
    {"open-access-values", "opens-with-any-access", "access 2: the answer to opening it: found imNoErr (0)"},
    {"open-stream-index", "opens-first-streams-only",
     "four-sounds.avi: opened as stream 1 and described: found 'pictures and sound: 1, 1', wanted"},

    // --- Sharing files ---
    {"open-shares", "never-lets-go", "quiet: another program cannot have it for itself"},
    {"open-shares", "lets-others-change-files", "opened: another program may change it under the clip"},
    {"files-are-left-alone", "touches-files", "plain.avi: the file after importing it: found"},
    {"reopen-of-a-lost-file", "forgets-lost-files",
     "gone while the clip was quiet: the clip's private data changed"},

    // --- Describing ---
    {"file-facts", "tells-one-frame-more", "plain.avi: the duration: found 26, wanted 25"},
    {"file-facts", "swaps-rate-and-scale", "plain.avi: the frame rate's numerator: found 1, wanted 25"},
    {"file-facts", "sees-alpha-everywhere", "a depth of 32 does not go with alpha 5"},
    {"file-facts", "counts-bytes-as-sample-frames", "the sample frames of stream 0: found 192000, wanted 48000"},
    {"streams-iterate", "has-streams-for-ever",
     "four-sounds.avi: the answer to the last of 256 streams: found imIterateStreams (18)"},
    {"streams-iterate", "shows-pictures-in-every-stream", "four-sounds.avi: pictures in stream 3: found 1, wanted 0"},
    {"streams-direct", "takes-negative-streams-for-the-first",
     "plain.avi: the answer to stream -1: found imNoErr (0), wanted imBadStreamIndex (19)"},
    {"streams-direct", "knows-streams-in-turn-only", "asked for directly: found '"},
    {"info-again", "forgets-after-the-text",
     "plain.avi: after pictures, sound and texts: found 'frame size: 49 x 32', wanted 'frame size: 48 x 32'"},
    {"calls-before-info", "answers-undescribed-clips", "the answer to imGetIndPixelFormat: found imNoErr (0)"},
    {"calls-before-info", "fails-in-silence", "error events sent to the host: found 0, wanted 1"},
    {"host-fields-stay", "clears-what-is-the-hosts", "Selector 37 wrote bytes of its record that are not its own: 32."},
    {"host-fields-stay", "fills-only-what-is-empty",
     "described in a record that is not empty: found 'pixel aspect: 1:1515870810', wanted 'pixel aspect: 1:1'"},

    // --- Lists and texts ---
    {"pixel-formats-end", "offers-a-format-twice", "plain.avi: pixel format yuy2 is offered twice"},
    {"pixel-formats-end", "offers-other-formats-later",
     "plain.avi: the list asked for again: found yuy3 yuy3 uyvy uyv7"},
    {"pixel-formats-end", "has-a-format-below-the-first", "the answer to pixel format -1: found imNoErr (0)"},
    {"channel-layout", "swaps-left-and-right", "plain.avi: stream 0, slots filled with -1: found 101 100 -1"},
    {"channel-layout", "clears-every-label", "plain.avi: stream 0, slots filled with 7777: found 100 101 0 0"},
    {"channel-layout", "has-a-layout-for-silence",
     "eleven.avi: the answer for a clip without sound: found imNoErr (0)"},
    {"analysis-text", "writes-numbers-with-commas",
     "plain.avi: the text has no line 'Frame rate: 25.000' at its place"},
    {"analysis-buffers", "cuts-without-an-end", "plain.avi: a buffer of 1 bytes: the text has no end"},
    {"analysis-buffers", "writes-behind-the-buffer", "The analysis text was written past its buffer of 0 bytes."},
    {"analysis-buffers", "clears-the-whole-buffer", "bytes behind the end of the text were written"},
    {"data-rate", "tells-half-of-the-rates",
     "plain.avi: the buffer that is asked for, in samples: found 12, wanted 25"},
    {"data-rate", "tells-rates-to-whole-lists-only",
     "plain.avi: samples written to a buffer for 24: found 0, wanted 24"},
    {"data-rate", "has-no-key-frames", "plain.avi: frame 0 is not told as a key frame"},
    {"data-rate", "tells-bits-as-bytes", "bytes, and the file has "},
    {"data-rate", "fills-dropped-frames", "dropped.avi: frame 5 is empty: found 0, wanted 1"},
    {"data-rate", "fills-more-than-the-buffer", "plain.avi: a buffer for 24 samples was overrun"},

    // --- A clip's life ---
    {"quiet-and-reopen", "is-another-clip-when-reopened",
     "plain.avi: the clip has other private data than before it was quiet"},
    {"quiet-and-reopen", "loses-its-sound-when-quiet",
     "plain.avi: after quiet and a new opening: found 'pictures and sound: 1, 0', wanted 'pictures and sound: 1, 1'"},
    {"close-in-any-state", "keeps-what-a-quiet-clip-has",
     "plain.avi: suites that are still held, closed when quiet: found 6, wanted 0"},
    {"close-in-any-state", "refuses-to-close-quiet-clips",
     "plain.avi: the answer to closing, closed when quiet: found imBadFile (2), wanted imNoErr (0)"},
    {"info-of-a-quiet-file", "describes-everything",
     "plain.avi: the answer to describing it while quiet: found imNoErr (0), wanted imBadFile (2)"},
    {"several-files", "knows-one-clip-only", "film-ntsc.avi: among other clips: found '"},
    {"one-file-several-times", "shares-clips-of-a-file", "plain.avi: two clips share private data"},
};

}  // namespace

std::span<const TrustRow> protocolTrust() { return kProtocolTrust; }
