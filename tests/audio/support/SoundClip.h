// Small files of sound alone, laid out so that every file position in them is known, and how a test asks for them.
//
// Stream 0 is an empty sound; stream 1 is the one under test. No video, so no codec takes part.
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

// So many sample frames of noise. Float noise is any bits at all: NaNs of every kind, infinities, denormals.
Bytes noise(const SoundFormat& format, std::size_t frames, std::uint32_t seed = 1);

// Chunks of so many bytes, the last one shorter.
std::vector<Bytes> cut(const Bytes& sound, std::size_t chunkBytes);

// Where the first chunk's data lies in a file of sound whose format has 18 bytes. Each further chunk's data lies
// 8 bytes behind the end of the one before.
constexpr std::int64_t kFirstChunk = 312;

// The file, found through "idx1". `length` in sample frames is what the stream's header states.
Bytes soundFile(const Bytes& format, const std::vector<Bytes>& chunks, std::uint32_t length);
Bytes soundFile(const SoundFormat& format, const Bytes& sound, std::size_t chunkBytes);

// A chunk as an OpenDML index lists it, whether or not the file has such a place, and how often in a row.
struct IndexedChunk {
    std::uint64_t offset = 0;
    std::uint32_t size = 0;
    std::uint32_t times = 1;
};

// 16-bit stereo that ends with its one real chunk, `data`. The index lists whatever it is told; one index chunk for
// each of `index`, so that no two offsets need be near each other.
Bytes indexedSoundFile(const std::vector<IndexedChunk>& index, const Bytes& data);

// Where the data of indexedSoundFile lies, for an index of so many, which list so many chunks.
constexpr std::uint64_t indexedDataPosition(std::size_t entries, std::size_t chunks) {
    return 344 + 48 * entries + 8 * chunks;
}
constexpr std::uint64_t indexedDataPosition(std::size_t entries) { return indexedDataPosition(entries, entries); }

// A file on disk, open in the plug-in with its sound chosen; the folder goes with it.
class SoundClip {
public:
    static constexpr csSDK_int32 kSoundStream = 1;

    // A file that does not open, or whose stream is not described, fails the test.
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
