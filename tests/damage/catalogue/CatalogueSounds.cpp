// Sound formats at their limits and beyond.
#include "damage/catalogue/Catalogue.h"

namespace damage {

namespace {

using namespace aviwriter;

Bytes soundIn(const Bytes& format) {
    return clipWith(headers({videoList(), streamList(soundHeader(), format)}));
}

// The same with matching media; only the length in the header may be wrong.
Bytes soundOfShape(const SoundShape& shape, std::uint32_t frames = kSoundFrames) {
    const Bytes sound = streamList(soundHeader(frames), soundFormat(shape));
    return clipOfChunks(headers({videoList(), sound}), mediaChunks(shape));
}

Bytes compressedSound() { return soundIn(waveFormatEx({.formatTag = 0x55})); }
Bytes noChannels() { return soundIn(waveFormatEx({.channels = 0})); }
Bytes channels1() { return soundOfShape({.channels = 1}); }
Bytes channels8() { return soundOfShape({.channels = 8}); }
Bytes channels32() { return soundOfShape({.channels = 32}); }
Bytes channels33() { return soundIn(waveFormatEx({.channels = 33})); }
Bytes channels65535() { return soundIn(waveFormatEx({.channels = 65535, .blockAlign = 4})); }
Bytes bits8() { return soundOfShape({.type = SoundType::int8}); }
Bytes bits8TwiceAsLong() { return soundOfShape({.type = SoundType::int8}, 2 * kSoundFrames); }
Bytes bits24() { return soundOfShape({.type = SoundType::int24}); }
Bytes bits32() { return soundOfShape({.type = SoundType::int32}); }
Bytes floats() { return soundOfShape({.type = SoundType::float32}); }
Bytes floatsIn32Channels() { return soundOfShape({.type = SoundType::float32, .channels = 32}); }
Bytes bits0() { return soundIn(waveFormatEx({.blockAlign = 4, .bitsPerSample = 0})); }
Bytes bits65535() { return soundIn(waveFormatEx({.blockAlign = 4, .bitsPerSample = 65535})); }
Bytes bits64() { return soundIn(waveFormatEx({.bitsPerSample = 64})); }
Bytes bits12() { return soundIn(waveFormatEx({.blockAlign = 4, .bitsPerSample = 12})); }
Bytes wrongBlock() { return soundIn(waveFormatEx({.blockAlign = 3})); }
Bytes highestRateOfSound() { return soundIn(waveFormatEx({.samplesPerSec = 0xFFFFFFFF})); }
Bytes soundRateOfZero() { return soundIn(waveFormatEx({.samplesPerSec = 0})); }
Bytes format15Bytes() { return soundIn(cutTo(waveFormatEx({}), 15)); }
Bytes format16Bytes() { return soundIn(pcmWaveFormat({})); }
Bytes extrasClaimingMore() { return soundIn(waveFormatEx({.cbSize = 65535})); }
Bytes extensibleCutShort() { return soundIn(cutTo(waveFormatExtensible({}), 30)); }
Bytes floatCalled16Bits() { return soundIn(waveFormatEx({.formatTag = kWaveFormatFloat, .bitsPerSample = 16})); }

const DamagedFile kBrokenSounds[] = {
    {"compressed-sound", "the sound is compressed", compressedSound,
     "10 pictures, all right; no sound",
     {"Avi unsupported audio stream format: 00000055-0000-0010-8000-00aa00389b71"}},
    {"no-channels", "the sound has no channels", noChannels,
     "10 pictures, all right; 19200 samples of sound in 0 channels, nothing to hear"},
    {"channels-1", "the sound has one channel", channels1,
     "10 pictures, all right; 19200 samples of sound in 1 channel, all right"},
    {"channels-8", "the sound has 8 channels", channels8,
     "10 pictures, all right; 19200 samples of sound in 8 channels, all right"},
    {"channels-32", "the sound has 32 channels", channels32,
     "10 pictures, all right; 19200 samples of sound in 32 channels, all right"},
    {"channels-33", "the sound has 33 channels", channels33,
     "10 pictures, all right; no sound",
     {"Avi too many audio channels: 33"}},
    {"channels-65535", "the sound has 65,535 channels", channels65535,
     "10 pictures, all right; no sound",
     {"Avi too many audio channels: 65535"}},
    {"bits-0", "the sound has 0 bits", bits0,
     "10 pictures, all right; no sound",
     {"Avi unsupported audio bits per sample: 0"}},
    {"bits-8", "the sound has 8 bits", bits8,
     "10 pictures, all right; 19200 samples of sound of 8 bits, all right"},
    {"bits-8-twice-as-long", "the sound has 8 bits, and its header claims twice the actual length", bits8TwiceAsLong,
     "10 pictures, all right; 38400 samples of sound of 8 bits, all right, at the lowest value at the end"},
    {"bits-12", "the sound has 12 bits", bits12,
     "10 pictures, all right; no sound",
     {"Avi unsupported audio bits per sample: 12"}},
    {"bits-24", "the sound has 24 bits", bits24,
     "10 pictures, all right; 19200 samples of sound of 24 bits, all right"},
    {"bits-32", "the sound has 32 bits", bits32,
     "10 pictures, all right; 19200 samples of sound of 32 bits, all right"},
    {"bits-64", "the sound has 64 bits", bits64,
     "10 pictures, all right; no sound",
     {"Avi unsupported audio bits per sample: 64"}},
    {"bits-65535", "the sound has 65,535 bits", bits65535,
     "10 pictures, all right; no sound",
     {"Avi unsupported audio bits per sample: 65535"}},
    {"float", "float sound", floats,
     "10 pictures, all right; 19200 samples of sound of 32 bits (float), all right"},
    {"float-in-32-channels", "float sound in 32 channels", floatsIn32Channels,
     "10 pictures, all right; 19200 samples of sound of 32 bits (float) in 32 channels, all right"},
    {"wrong-block", "the sound's block is 3 bytes instead of 4", wrongBlock,
     "10 pictures, all right; no sound",
     {"Avi audio stream format error: nBlockAlign != nChannels * (wBitsPerSample / 8)"}},
    {"highest-sound-rate", "4,294,967,295 samples per second", highestRateOfSound,
     "10 pictures, all right; 19200 samples of sound at 4294967296 Hz, all right"},
    {"sound-rate-of-zero", "0 samples per second", soundRateOfZero,
     "10 pictures, all right; 19200 samples of sound at 0 Hz, all right"},
    {"sound-format-of-15-bytes", "the sound format is one byte short", format15Bytes,
     "10 pictures, all right; no sound",
     {"Avi audio stream format size is too small: 15"}},
    {"sound-format-of-16-bytes", "the sound format has the minimum size", format16Bytes,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"sound-format-claiming-more", "the sound format claims 65,535 further bytes", extrasClaimingMore,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"extensible-cut-short", "an extensible sound format is truncated", extensibleCutShort,
     "10 pictures, all right; no sound",
     {"Avi unsupported audio stream format: 00000001-0000-0000-0000-000000000000"}},
    {"float-called-16-bits", "float sound that claims 16 bits", floatCalled16Bits,
     "10 pictures, all right; 19200 samples of sound of 32 bits (float), other sound from 0 on"},
};

}  // namespace

std::span<const DamagedFile> brokenSounds() { return kBrokenSounds; }

}  // namespace damage
