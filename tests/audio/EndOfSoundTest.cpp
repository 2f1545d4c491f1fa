// Requests at, across and far beyond the end of a sound, and requests for nothing.
#include "audio/support/SoundTest.h"

#include <cstdint>

using aviwriter::SampleFormat;

namespace {

constexpr std::uint32_t kFrames = 200;

class EndOfSound : public SoundTest {
protected:
    static float fillOf(SampleFormat samples) { return samples == SampleFormat::pcm8 ? -1.0f : 0.0f; }
    static inline const std::vector<SampleFormat> kWithSilence = {SampleFormat::pcm16, SampleFormat::pcm24,
                                                                  SampleFormat::pcm32, SampleFormat::float32};

    static void expectAllEqual(SampleFormat samples, PrAudioSample position, float value) {
        const SoundFormat format = {samples, 2};
        SoundClip clip(session(), soundFile(format, noise(format, kFrames), 100));
        EXPECT_TRUE(holds(clip.audio(position, 50, 2), constantSound(value, 2, 50)))
            << "format " << static_cast<int>(samples);
    }

    // Expects the last `kept` frames, and what follows them.
    static void expectTail(SampleFormat samples, std::uint32_t kept) {
        const SoundFormat format = {samples, 2};
        const Bytes sound = noise(format, kFrames);
        SoundClip clip(session(), soundFile(format, sound, 64));
        SampleBits expected = referenceSound(format, sound, kFrames - kept, kept);
        const SampleBits fill = constantSound(fillOf(samples), 2, 300 - kept);
        for (std::size_t channel = 0; channel < 2; ++channel) {
            expected[channel].insert(expected[channel].end(), fill[channel].begin(), fill[channel].end());
        }
        EXPECT_TRUE(holds(clip.audio(kFrames - kept, 300, 2), expected)) << "format " << static_cast<int>(samples);
    }
};

}  // namespace

TEST_F(EndOfSound, IsFollowedBySilence) {
    for (const SampleFormat samples : kWithSilence) {
        expectTail(samples, 100);
    }
}

TEST_F(EndOfSound, OfEightBitsIsFollowedByTheLowestSample) { expectTail(SampleFormat::pcm8, 100); }

TEST_F(EndOfSound, HasSilenceFromTheFirstFrameOn) {
    for (const SampleFormat samples : kWithSilence) {
        expectAllEqual(samples, kFrames, 0.0f);
    }
}

TEST_F(EndOfSound, OfEightBitsHasTheLowestSampleFromTheFirstFrameOn) {
    expectAllEqual(SampleFormat::pcm8, kFrames, -1.0f);
}

TEST_F(EndOfSound, FarAwayStillSucceeds) {
    for (const PrAudioSample position : {PrAudioSample{0x7FFFFFFF}, PrAudioSample{0xFFFFFFFF},
                                         PrAudioSample{1} << 60, INT64_MAX - 50, INT64_MAX}) {
        expectAllEqual(SampleFormat::pcm16, position, 0.0f);
        expectAllEqual(SampleFormat::pcm8, position, -1.0f);
    }
}

TEST_F(EndOfSound, OfAnEmptyStreamIsItsBeginning) {
    const SoundFormat format;
    SoundClip clip(session(), soundFile(formatRecord(format), {}, 0));
    EXPECT_TRUE(holds(clip.audio(0, 10, 2), constantSound(0.0f, 2, 10)));
}

// Reading neither relies on the header's length nor is limited by it.
TEST_F(EndOfSound, IsWhereTheChunksEndNotWhereTheHeaderSays) {
    const SoundFormat format;
    const Bytes sound = noise(format, kFrames);
    SoundClip clip(session(), soundFile(formatRecord(format), cut(sound, 100), 10));
    EXPECT_TRUE(holds(clip.audio(0, kFrames, 2), referenceSound(format, sound, 0, kFrames)));
}

TEST_F(EndOfSound, CutsTheLastFrameWhereTheBytesEnd) {
    const SoundFormat format;
    Bytes sound = noise(format, 10);
    sound.resize(37);                               // half a sample remains of the last frame
    SoundClip clip(session(), soundFile(format, sound, 100));
    EXPECT_TRUE(holds(clip.audio(0, 12, 2), referenceSound(format, sound, 0, 12)));
}

TEST_F(EndOfSound, IsLeftByReadingBackwards) {
    const SoundFormat format;
    const Bytes sound = noise(format, kFrames);
    SoundClip clip(session(), soundFile(format, sound, 100));
    clip.audio(INT64_MAX, 100, 2);
    EXPECT_TRUE(holds(clip.audio(5, 20, 2), referenceSound(format, sound, 5, 20)));
}

TEST_F(EndOfSound, DeliversNoFramesIfNoneAreRequested) {
    SoundClip clip(session(), soundFile(SoundFormat{}, noise(SoundFormat{}, kFrames), 100));
    EXPECT_TRUE(holds(clip.audio(0, 0, 2), SampleBits(2)));
}

TEST_F(EndOfSound, WithoutChannelsIntegersSucceed) {
    SoundClip clip(session(), soundFile(formatRecord({SampleFormat::pcm16, 0}), {Bytes(40)}, 10));
    EXPECT_TRUE(holds(clip.audio(0, 1000, 0), SampleBits{}));
}

TEST_F(EndOfSound, WithoutChannelsAnyNumberOfFramesSucceeds) {
    SoundClip clip(session(), soundFile(formatRecord({SampleFormat::float32, 0}), {Bytes(40)}, 10));
    EXPECT_TRUE(holds(clip.audio(0, 0xFFFFFFFF, 0), SampleBits{}));
}
