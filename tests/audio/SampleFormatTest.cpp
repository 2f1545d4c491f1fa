// Every sample type, in every form of header, for small and large channel counts and any chunk size.
#include "audio/support/SoundTest.h"

#include <tuple>

using aviwriter::SampleFormat;
using aviwriter::WaveRecord;

namespace {

enum class Chunking { Whole, FrameByFrame, WithinSamples, WithEmptyChunks };

constexpr std::size_t kFormatFrames = 20;
constexpr std::size_t kOddChunk = 7;    // bytes, so that samples and frames cross the chunks' ends

std::vector<Bytes> chunksOf(const Bytes& sound, const SoundFormat& format, Chunking chunking) {
    switch (chunking) {
    case Chunking::Whole: return {sound};
    case Chunking::FrameByFrame: return cut(sound, frameBytes(format));
    case Chunking::WithinSamples: return cut(sound, kOddChunk);
    case Chunking::WithEmptyChunks: break;
    }
    std::vector<Bytes> chunks;
    for (const Bytes& chunk : cut(sound, kOddChunk)) {
        chunks.insert(chunks.end(), {Bytes{}, chunk, Bytes{}});
    }
    return chunks;
}

using Case = std::tuple<SampleFormat, WaveRecord, std::uint16_t, Chunking>;

class EverySampleFormat : public SoundTest, public ::testing::WithParamInterface<Case> {};

std::string nameOf(const ::testing::TestParamInfo<Case>& info) {
    constexpr const char* kSampleFormatNames[] = {"Pcm8", "Pcm16", "Pcm24", "Pcm32", "Float"};
    constexpr const char* kRecords[] = {"In16Bytes", "In18Bytes", "Extensible"};
    constexpr const char* kChunkings[] = {"InOneChunk", "FrameByFrame", "CutWithinSamples", "WithEmptyChunks"};
    const auto [samples, record, channels, chunking] = info.param;
    return std::string(kSampleFormatNames[static_cast<int>(samples)]) + kRecords[static_cast<int>(record)] + "Of" +
           std::to_string(channels) + "Channels" + kChunkings[static_cast<int>(chunking)];
}

}  // namespace

TEST_P(EverySampleFormat, ReachesTheHostUnchanged) {
    const auto [samples, record, channels, chunking] = GetParam();
    const SoundFormat format = {samples, channels, record};
    const Bytes sound = noise(format, kFormatFrames);
    SoundClip clip(session(), soundFile(formatRecord(format), chunksOf(sound, format, chunking), kFormatFrames));
    EXPECT_TRUE(holds(clip.audio(0, kFormatFrames, channels), referenceSound(format, sound, 0, kFormatFrames)));
}

INSTANTIATE_TEST_SUITE_P(Sound, EverySampleFormat,
                         ::testing::Combine(::testing::Values(SampleFormat::pcm8, SampleFormat::pcm16,
                                                              SampleFormat::pcm24, SampleFormat::pcm32,
                                                              SampleFormat::float32),
                                            ::testing::Values(WaveRecord::pcm16, WaveRecord::ex18,
                                                              WaveRecord::extensible40),
                                            ::testing::Values<std::uint16_t>(1, 2, 6, 8, 32),
                                            ::testing::Values(Chunking::Whole, Chunking::FrameByFrame,
                                                              Chunking::WithinSamples, Chunking::WithEmptyChunks)),
                         nameOf);
