// Interrupted captures, incomplete copies, and files that are not clips.
#include "damage/catalogue/Catalogue.h"

namespace damage {

namespace {

using namespace aviwriter;

constexpr std::uint64_t kGibibyte = std::uint64_t{1} << 30;

std::size_t moviAt(const Bytes& file) { return positionOf(file, "movi") - 8; }

// The clip up to the end of its media, as left by a recorder that could not write the index.
Bytes withoutIndex() {
    const Bytes clip = honestClip();
    return cutTo(clip, positionOf(clip, "idx1"));
}

// The same with these sizes, which a recorder writes last.
Bytes died(std::uint32_t riffSize, std::uint32_t moviSize) {
    Bytes file = withoutIndex();
    overwrite(file, 4, u32(riffSize));
    overwrite(file, moviAt(file) + 4, u32(moviSize));
    return file;
}


Bytes diedWithoutSizes() { return died(0, 0); }
Bytes diedWithoutMediaSize() { return died(u32Of(withoutIndex().size() - 8), 0); }
Bytes diedWithoutRiffSize() { return died(0, u32Of(withoutIndex().size() - moviAt(honestClip()) - 8)); }
Bytes diedWithTheHeadersSize() { return died(u32Of(moviAt(honestClip()) - 8), 4); }
Bytes diedWithTheLargestSizes() { return died(0xFFFFFFFF, 0xFFFFFFFF); }
Bytes diedWithAGuessedSize() { return died(1 << 30, 0); }
Bytes diedWithoutIndex() {
    const std::size_t end = withoutIndex().size();
    return died(u32Of(end - 8), u32Of(end - moviAt(honestClip()) - 8));
}

// A clip without the last segment's indexes, which the super indexes do not list yet.
Bytes diedInTheSecondSegment() {
    Bytes file = openDmlClip(2);
    for (std::size_t stream = 0; stream < 2; ++stream) {
        overwrite(file, superEntryAt(file, stream, 1), filled(16));
        overwrite(file, positionOf(file, "indx", stream) + 8 + 4, u32(1));
    }
    return cutTo(file, positionOf(file, "ix00", 1));
}

Bytes part(const Bytes& file, unsigned percent) { return cutTo(file, file.size() * percent / 100); }

template <unsigned percent>
Bytes copyOf() { return part(honestClip(), percent); }

template <unsigned percent>
Bytes openDmlCopyOf() { return part(openDmlClip(5), percent); }

Bytes wrongRiffSize() {
    Bytes file = honestClip();
    overwrite(file, 4, u32(100));
    return file;
}

Bytes copyThatWasGrown() { return honestClip() + filled(100'001, 0xFF); }
Bytes twoClipsInOne() { return honestClip() + honestClip(); }
Bytes withoutItsFirstByte() {
    const Bytes clip = honestClip();
    return Bytes(clip.begin() + 1, clip.end());
}
Bytes nothing() { return {}; }
Bytes zeros() { return filled(100'000); }
Bytes words() {
    Bytes file;
    while (file.size() < 50'000) {
        file = file + text("A text that somebody named like a clip. ");
    }
    return file;
}
Bytes soundFile() {
    return riff("WAVE", {chunk("fmt ", pcmWaveFormat({})), chunk("data", soundChunk(0))});
}
Bytes laterSegmentAlone() { return riff("AVIX", {list("movi", mediaChunks())}); }

const DamagedFile kBrokenCaptures[] = {
    {"died-without-sizes", "an interrupted capture: RIFF and media list have size 0, no index", diedWithoutSizes,
     "refused: imBadFile (2)",
     {"Failed to parse avi: hdrl missing"}},
    {"died-without-riff-size", "the same, only the RIFF has size 0", diedWithoutRiffSize,
     "refused: imBadFile (2)",
     {"Failed to parse avi: hdrl missing"}},
    {"died-without-media-size", "the same, only the media list has size 0", diedWithoutMediaSize,
     "no pictures; 19200 samples of sound, silent"},
    {"died-with-the-headers-size", "the same, RIFF and media list have the sizes of an empty file",
     diedWithTheHeadersSize,
     "no pictures; 19200 samples of sound, silent"},
    {"died-with-the-largest-sizes", "the same, both claim 4 GiB", diedWithTheLargestSizes,
     "no pictures; 19200 samples of sound, silent"},
    {"died-without-index", "the same, both sizes are right", diedWithoutIndex,
     "no pictures; 19200 samples of sound, silent"},
    {"died-before-zeros", "an interrupted capture to a file that was allocated with 8 GiB", diedWithoutIndex,
     "no pictures; 19200 samples of sound, silent", {}, 8 * kGibibyte},
    {"died-before-zeros-without-sizes", "the same; the RIFF claims 1 GiB and the media list has size 0",
     diedWithAGuessedSize,
     "no pictures; 19200 samples of sound, silent", {}, 8 * kGibibyte},
    {"whole-before-zeros", "a complete clip in a file that was allocated with 8 GiB", honestClip,
     "10 pictures, all right; 19200 samples of sound, all right", {}, 8 * kGibibyte},
    {"died-in-the-second-segment", "an interrupted long capture; its first segment is complete", diedInTheSecondSegment,
     "5 pictures, all right; 19200 samples of sound, silent from 9600 on"},
    {"copy-of-1-percent", "an incomplete copy; the index is `idx1`, at the end", copyOf<1>,
     "no pictures; 19200 samples of sound, silent"},
    {"copy-of-5-percent", "the same", copyOf<5>,
     "no pictures; 19200 samples of sound, silent"},
    {"copy-of-25-percent", "the same", copyOf<25>,
     "no pictures; 19200 samples of sound, silent"},
    {"copy-of-50-percent", "the same", copyOf<50>,
     "no pictures; 19200 samples of sound, silent"},
    {"copy-of-75-percent", "the same", copyOf<75>,
     "no pictures; 19200 samples of sound, silent"},
    {"copy-of-95-percent", "the same", copyOf<95>,
     "no pictures; 19200 samples of sound, silent"},
    {"copy-of-99-percent", "the same", copyOf<99>,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-copy-of-1-percent", "an incomplete copy of a clip in five segments with OpenDML indexes",
     openDmlCopyOf<1>,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-copy-of-5-percent", "the same", openDmlCopyOf<5>,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-copy-of-25-percent", "the same", openDmlCopyOf<25>,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-copy-of-50-percent", "the same", openDmlCopyOf<50>,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-copy-of-75-percent", "the same", openDmlCopyOf<75>,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-copy-of-95-percent", "the same", openDmlCopyOf<95>,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-copy-of-99-percent", "the same", openDmlCopyOf<99>,
     "no pictures; 19200 samples of sound, silent"},
    {"wrong-riff-size", "the RIFF claims 100 bytes", wrongRiffSize,
     "no pictures; 19200 samples of sound, silent"},
    {"grown-copy", "other data follows the clip", copyThatWasGrown,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"two-clips-in-one", "two clips in one file", twoClipsInOne,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"beginning-is-missing", "the first byte is missing", withoutItsFirstByte,
     "refused: imBadFile (2)",
     {"Failed to parse avi: AVI chunk missing"}},
    {"nothing", "an empty file", nothing,
     "refused: imBadFile (2)",
     {"Failed to parse avi: riff structure is empty"}},
    {"zeros", "100,000 zeros", zeros,
     "refused: imBadFile (2)",
     {"Failed to parse avi: AVI chunk missing"}},
    {"words", "a text file named like a clip", words,
     "refused: imBadFile (2)",
     {"Failed to parse avi: AVI chunk missing"}},
    {"sound-file", "a sound file named like a clip", soundFile,
     "refused: imBadFile (2)",
     {"Failed to parse avi: AVI chunk missing"}},
    {"later-segment-alone", "only a later segment of a long clip", laterSegmentAlone,
     "refused: imBadFile (2)",
     {"Failed to parse avi: AVI chunk missing"}},
};

}  // namespace

std::span<const DamagedFile> brokenCaptures() { return kBrokenCaptures; }

}  // namespace damage
