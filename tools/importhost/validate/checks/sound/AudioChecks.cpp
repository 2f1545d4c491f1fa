// The table of the checks of sound; they are in the files beside this one.
#include "importhost/validate/checks/sound/AudioParts.h"
#include "importhost/validate/framework/Groups.h"

namespace importhost::validate {

namespace {

constexpr Check kAudioChecks[] = {
    {"audio-delivered", 1,
     "The start, the middle and the end of every stream of sound are imported, and every sample of every channel is "
     "written. A user hears a loud crack where samples are left out, or nothing.",
     audioDelivered},
    {"audio-true-samples", 1,
     "The sound of the program's own samples arrives as it was written, sample by sample, for every sample format and "
     "number of channels. A user hears noise, swapped speakers, or sound that is late.",
     audioTrueSamples},
    {"audio-past-the-end", 2,
     "A request behind the end, or across it, succeeds: what the stream has is delivered and the rest filled with "
     "silence, with the lowest sample in streams of 8 bits. Editors read ahead of the end of every clip.",
     audioPastTheEnd},
    {"audio-exact-buffers", 2,
     "Requests of one sample and more, in buffers of exactly that size, are filled and nothing is written past them. "
     "An editor's memory is damaged otherwise, and it crashes later and elsewhere.",
     audioExactBuffers},
    {"audio-zero-size", 2,
     "A request of no samples succeeds, writes nothing, and the next request at a negative position goes on from its "
     "position.",
     audioZeroSize},
    {"audio-streams", 2,
     "Each stream of sound of a clip can be selected again and again and is the same sound every time. A user hears "
     "the wrong language.",
     audioStreams},
    {"audio-continues", 3,
     "A negative position, whichever, goes on where the last request ended: after jumps, behind the end, and from 0 "
     "after the clip was described anew. A user hears sound repeated or skipped.",
     audioContinues},
    {"audio-partitions", 3,
     "Sound imported in parts of random sizes is the same as imported at once. Otherwise it clicks where the editor's "
     "requests meet.",
     audioPartitions},
    {"audio-seeks", 3,
     "Sound imported backwards and in random order is the same as in a row. Otherwise scrubbing and playing differ.",
     audioSeeks},
    {"audio-after-quiet", 3,
     "After a clip was quieted and opened again its sound is the same, described again or not, and goes on where it "
     "ended. Editors quiet clips whenever the user works in another program.",
     audioAfterQuiet},
    {"audio-no-stream", 4,
     "A stream that the clip does not have can be described, and its sound succeeds without a sample being written: "
     "hosts that count streams differently must not hear another stream's sound.",
     audioNoStream},
    {"audio-two-clips", 4,
     "Streams of one file opened several times, and of several files, imported in turns, are each the same as alone "
     "and each go on where they ended. Timelines mix them all the time.",
     audioTwoClips},
    {"audio-beside-frames", 4,
     "Sound and pictures of one clip asked for in turns are the same as apart. They are read through one open file, "
     "and playing needs both.",
     audioBesideFrames},
    {"audio-large-request", 5,
     "One request for a whole stream, and for more than it holds, is the same as many small ones. Editors that draw "
     "waveforms ask so.",
     audioLargeRequest},
    {"audio-every-partition", 8,
     "Every way of cutting a few samples into requests gives the same sound: at the start, at the end, and where two "
     "chunks of the file meet.",
     audioEveryPartition},
};

}  // namespace

std::span<const Check> audioChecks() { return kAudioChecks; }

}  // namespace importhost::validate
