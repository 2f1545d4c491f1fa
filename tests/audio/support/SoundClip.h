// Small files with only sound, in which every file position is known, and requests to them.
//
// Stream 0 is an empty sound; stream 1 is the one under test. There is no video, so the codec is not used.
#pragma once

#include "aviwriter/Blocks.h"
#include "aviwriter/Sample.h"
#include "hostkit/sessions/ClipSession.h"
#include "support/TempFolder.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

using aviwriter::Bytes;
using Lines = std::vector<std::string>;

struct SoundFormat {
    aviwriter::SampleFormat samples = aviwriter::SampleFormat::pcm16;
    std::uint16_t channels = 2;
    aviwriter::WaveRecord record = aviwriter::WaveRecord::ex18;
};

// The bytes of "strf", at 48000 Hz.
Bytes formatRecord(const SoundFormat& format);

std::size_t frameBytes(const SoundFormat& format);

// `frames` sample frames of noise. Float noise consists of arbitrary bits: NaNs of every kind, infinities, denormals.
Bytes noise(const SoundFormat& format, std::size_t frames, std::uint32_t seed = 1);

// Cuts `sound` into chunks of `chunkBytes`; the last one may be shorter.
std::vector<Bytes> cut(const Bytes& sound, std::size_t chunkBytes);

// Position of the first chunk's data in a sound file whose format has 18 bytes. Each further chunk's data begins
// 8 bytes after the end of the previous one.
constexpr std::int64_t kFirstChunk = 312;

// A file with an "idx1". `length` is the length in the stream's header, in sample frames.
Bytes soundFile(const Bytes& format, const std::vector<Bytes>& chunks, std::uint32_t length);
Bytes soundFile(const SoundFormat& format, const Bytes& sound, std::size_t chunkBytes);

// A chunk in an OpenDML index, even at a position that the file does not have, and its number of repetitions.
struct IndexedChunk {
    std::uint64_t offset = 0;
    std::uint32_t size = 0;
    std::uint32_t times = 1;
};

// A 16-bit stereo file that ends with its only real chunk, `data`. Each element of `index` has an index chunk of its
// own, so that offsets can be arbitrarily far apart.
Bytes indexedSoundFile(const std::vector<IndexedChunk>& index, const Bytes& data);

// Position of the data in indexedSoundFile's file, for an index of `entries` elements that list `chunks` chunks.
constexpr std::uint64_t indexedDataPosition(std::size_t entries, std::size_t chunks) {
    return 344 + 48 * entries + 8 * chunks;
}
constexpr std::uint64_t indexedDataPosition(std::size_t entries) { return indexedDataPosition(entries, entries); }

// A file on disk that is open in the plug-in with its sound selected. Deletes its folder.
class SoundClip {
public:
    static constexpr csSDK_int32 kSoundStream = 1;

    // Fails the test if the file does not open or its stream cannot be described.
    SoundClip(hostkit::ImporterSession& session, const Bytes& file, csSDK_int32 stream = kSoundStream);

    hostkit::ClipSession& session() { return *m_clip; }
    std::filesystem::path path() const;

    hostkit::AudioAnswer audio(PrAudioSample position, csSDK_uint32 frames, csSDK_int32 channels) {
        return m_clip->audio(position, frames, channels);
    }

private:
    TempFolder m_folder;
    std::unique_ptr<hostkit::ClipSession> m_clip;
};

void writeFile(const std::filesystem::path& path, const Bytes& bytes);
