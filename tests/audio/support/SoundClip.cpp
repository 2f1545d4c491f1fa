#include "audio/support/SoundClip.h"

#include "importer/support/ClipSketch.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <stdexcept>

namespace {

constexpr char kFileName[] = "sound.avi";

AudioSketch emptySound() { return {.length = 0, .chunks = {}}; }

}  // namespace

Bytes formatRecord(const SoundFormat& format) {
    using namespace aviwriter;
    const WaveFormat wave = {.formatTag = format.samples == SampleFormat::float32 ? kWaveFormatFloat : kWaveFormatPcm,
                             .channels = format.channels,
                             .bitsPerSample = bitsPerSample(format.samples)};
    switch (format.record) {
    case WaveRecord::pcm16: return pcmWaveFormat(wave);
    case WaveRecord::ex18: return waveFormatEx(wave);
    case WaveRecord::extensible40: return waveFormatExtensible(wave);
    }
    throw std::invalid_argument("no such record");
}

std::size_t frameBytes(const SoundFormat& format) {
    return std::size_t{format.channels} * (aviwriter::bitsPerSample(format.samples) / 8u);
}

Bytes noise(const SoundFormat& format, std::size_t frames, std::uint32_t seed) {
    std::mt19937 random(seed);
    Bytes bytes(frames * frameBytes(format));
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

std::vector<Bytes> cut(const Bytes& sound, std::size_t chunkBytes) {
    std::vector<Bytes> chunks;
    for (std::size_t from = 0; from < sound.size(); from += chunkBytes) {
        const auto begin = sound.begin() + static_cast<std::ptrdiff_t>(from);
        const auto count = std::min(chunkBytes, sound.size() - from);
        chunks.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(count));
    }
    return chunks;
}

Bytes soundFile(const Bytes& format, const std::vector<Bytes>& chunks, std::uint32_t length) {
    return aviFile({audioStream(emptySound()), audioStream({.format = format, .length = length, .chunks = chunks})});
}

Bytes soundFile(const SoundFormat& format, const Bytes& sound, std::size_t chunkBytes) {
    return soundFile(formatRecord(format), cut(sound, chunkBytes),
                     static_cast<std::uint32_t>(sound.size() / frameBytes(format)));
}

Bytes indexedSoundFile(const std::vector<IndexedChunk>& index, const Bytes& data) {
    using namespace aviwriter;
    const StreamSketch empty = audioStream(emptySound());
    const StreamSketch sound = audioStream({.length = 0});
    std::uint64_t position = indexedDataPosition(index.size(), 0) - 8 - 32 * index.size();
    SuperIndex superIndex = {.chunkId = "01wb"};
    std::vector<Bytes> movi;
    for (const IndexedChunk& entry : index) {
        const Bytes chunks = ix("ix01", {.chunkId = "01wb", .baseOffset = entry.offset,
                                         .entries = std::vector<StandardIndexEntry>(entry.times, {0, entry.size})});
        const auto size = static_cast<std::uint32_t>(chunks.size());
        superIndex.entries.push_back({.offset = position, .size = size, .duration = 0});
        position += size;
        movi.push_back(chunks);
    }
    movi.push_back(chunk("01wb", data));
    return riff("AVI ", {list("hdrl", {avih({.streams = 2}),
                                       list("strl", {strh(empty.header), strf(empty.format)}),
                                       list("strl", {strh(sound.header), strf(sound.format), indx(superIndex)})}),
                         list("movi", movi)});
}

SoundClip::SoundClip(hostkit::ImporterSession& session, const Bytes& file, csSDK_int32 stream) {
    writeFile(path(), file);
    m_clip = std::make_unique<hostkit::ClipSession>(session, path());
    EXPECT_EQ(m_clip->open().result, imNoErr);
    const auto info = m_clip->info(stream);
    // The result of the last stream's description says that there are no more.
    EXPECT_EQ(info.result, stream == 0 ? imNoErr : imBadStreamIndex);
}

std::filesystem::path SoundClip::path() const { return m_folder.folder() / kFileName; }

void writeFile(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw std::runtime_error("the test file cannot be written");
    }
}
