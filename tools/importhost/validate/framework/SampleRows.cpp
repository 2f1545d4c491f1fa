// The samples that a run without files writes. Small pictures and few frames: each is opened many times.
#include "importhost/validate/framework/AviBytes.h"
#include "importhost/validate/framework/Clip.h"

#include "aviwriter/Types.h"

#include <algorithm>

namespace importhost::validate {

namespace {

using aviwriter::Bytes;
using aviwriter::IndexKind;
using aviwriter::SampleAudio;
using aviwriter::SampleFormat;
using aviwriter::SampleOptions;
using aviwriter::WaveRecord;

constexpr std::uint32_t kYuv422 = 104;
constexpr std::uint32_t kWidth = 48;
constexpr std::uint32_t kHeight = 32;

const SampleAudio kStereo{SampleFormat::pcm16, 2, 48000, WaveRecord::pcm16};

SampleOptions sample(std::uint32_t frames, std::uint32_t rate, std::uint32_t scale, IndexKind index,
                     std::vector<SampleAudio> audio = {}) {
    SampleOptions options;
    options.type = kYuv422;
    options.width = kWidth;
    options.height = kHeight;
    options.frames = frames;
    options.rate = rate;
    options.scale = scale;
    options.layout.index = index;
    options.audio = std::move(audio);
    return options;
}

SampleOptions withDropped(SampleOptions options, std::set<std::uint32_t> dropped) {
    options.dropped = std::move(dropped);
    return options;
}

SampleOptions withoutVideo(SampleOptions options) {
    options.hasVideo = false;
    return options;
}

SampleOptions inSegments(SampleOptions options, std::uint64_t bytes) {
    options.layout.segmentBytes = bytes;
    return options;
}

SampleOptions ofType(std::uint32_t type) {
    SampleOptions options = sample(4, 25, 1, IndexKind::both);
    options.type = type;
    return options;
}

const SampleAudio kByteMono{SampleFormat::pcm8, 1, 22050, WaveRecord::pcm16, 0, 700};
const SampleAudio kThreeBytes{SampleFormat::pcm24, 2, 44100, WaveRecord::ex18};
const SampleAudio kSurround{SampleFormat::pcm32, 6, 48000, WaveRecord::extensible40, 0x3F};
const SampleAudio kFloatEight{SampleFormat::float32, 8, 48000, WaveRecord::extensible40, 0x63F, 333};

// --- Damage -----------------------------------------------------------------------------------------------------

Bytes firstHalf(Bytes bytes) {
    bytes.resize(bytes.size() / 2);
    return bytes;
}

Bytes headersOnly(Bytes bytes) {
    bytes.resize(std::min<std::size_t>(bytes.size(), 300));
    return bytes;
}

// What a recorder leaves whose machine lost power: sizes never written, no index.
Bytes diedWhileRecording(Bytes bytes) {
    const std::size_t movi = positionOf(bytes, "movi");
    put32(bytes, 4, 0);
    put32(bytes, movi - 4, 0);
    bytes.resize(std::min(bytes.size(), positionOf(bytes, "idx1")));
    return bytes;
}

// Every entry of the index points far behind the end of the file.
Bytes indexBehindTheEnd(Bytes bytes) {
    const std::size_t idx1 = positionOf(bytes, "idx1") + 8;
    for (std::size_t entry = idx1; entry + 16 <= bytes.size(); entry += 16) {
        put32(bytes, entry + 8, 0x7FFFFF00);
    }
    return bytes;
}

Bytes noise(Bytes bytes) {
    std::uint32_t state = 1;
    for (std::uint8_t& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return bytes;
}

Bytes nothing(Bytes bytes) {
    bytes.clear();
    return bytes;
}

// --- The table --------------------------------------------------------------------------------------------------

std::vector<SampleRow> makeRows() {
    constexpr ClipKind good = ClipKind::Good;
    constexpr ClipKind damaged = ClipKind::Damaged;
    constexpr ClipKind foreign = ClipKind::Foreign;
    const SampleOptions plain = sample(25, 25, 1, IndexKind::both, {kStereo});
    const SampleOptions plainIdx1 = sample(25, 25, 1, IndexKind::idx1, {kStereo});
    std::vector<SampleRow> rows = {
        {1, "plain.avi", "both kinds of index, stereo sound", good, plain},
        {1, "film-ntsc.avi", "24000/1001 frames a second: no whole number of ticks of sound", good,
         sample(30, 24000, 1001, IndexKind::openDml, {kStereo})},
        {1, "cut-in-half.avi", "a copy that was broken off", damaged, plain, firstHalf},
        {1, "noise.avi", "no AVI at all", foreign, plain, noise},
        {2, "eleven.avi", "11 frames a second and the old index alone", good, sample(12, 11, 1, IndexKind::idx1)},
        {2, "dropped.avi", "empty frames at the start, in a run, and last", good,
         withDropped(sample(16, 30, 1, IndexKind::both), {0, 1, 5, 6, 7, 15})},
        {2, "sound-only.avi", "no pictures: not a clip for this importer", damaged,
         withoutVideo(sample(25, 25, 1, IndexKind::both, {kStereo})), nullptr},
        {2, "four-sounds.avi", "four streams of sound, each of another format", good,
         sample(25, 25, 1, IndexKind::both, {kByteMono, kThreeBytes, kSurround, kFloatEight})},
        {3, "segments.avi", "many short segments, standard indexes", good,
         inSegments(sample(24, 25, 1, IndexKind::openDml, {kStereo}), 20000)},
        {3, "one-frame.avi", "a clip of one frame", good, sample(1, 25, 1, IndexKind::both, {kStereo})},
        {3, "headers-only.avi", "the copy ended in the headers", damaged, plain, headersOnly},
        {3, "died-recording.avi", "sizes never written, no index", damaged, plainIdx1, diedWhileRecording},
        {3, "index-behind-end.avi", "an index of positions that the file does not have", damaged, plainIdx1,
         indexBehindTheEnd},
        {3, "empty.avi", "no byte at all", foreign, plain, nothing},
        {4, "fast.avi", "a million frames a second", good, sample(10, 1000000, 1, IndexKind::both)},
        {4, "slow.avi", "a frame every thousand seconds", good, sample(3, 1, 1000, IndexKind::both)},
        {4, "odd-rate.avi", "a rate of two primes near 2^31", good,
         sample(8, 2147483629, 71582791, IndexKind::both)},
    };
    for (const aviwriter::TypeName& type : aviwriter::typeNames()) {
        rows.push_back({5, "type-" + std::to_string(type.type) + ".avi", type.words, good, ofType(type.type)});
    }
    return rows;
}

}  // namespace

const std::vector<SampleRow>& sampleRows() {
    static const std::vector<SampleRow> rows = makeRows();
    return rows;
}

}  // namespace importhost::validate
