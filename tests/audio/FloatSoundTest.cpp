// Float samples: copied as bits, and never read past the bytes that a request has by the stream's format.
#include "audio/support/SoundTest.h"

#include <bit>

using aviwriter::SampleFormat;

namespace {

class FloatSound : public SoundTest {
protected:
    static constexpr SoundFormat kStereo = {SampleFormat::float32, 2};

    // A format record that states `bits` bits for a float sample.
    static Bytes shortFormat(std::uint16_t channels, std::uint16_t bits) {
        return aviwriter::waveFormatEx({.formatTag = 3, .channels = channels, .bitsPerSample = bits});
    }

    // The samples of a request that consists of `bytes`; further frames are silent.
    static SampleBits floatsIn(const Bytes& bytes, std::uint16_t channels, std::uint32_t frames) {
        const Bytes wholeSamples(bytes.begin(), bytes.end() - static_cast<std::ptrdiff_t>(bytes.size() % 4));
        return referenceSound({SampleFormat::float32, channels}, wholeSamples, 0, frames);
    }

    static Bytes firstOf(const Bytes& bytes, std::size_t count) {
        return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
    }
};

}  // namespace

TEST_F(FloatSound, OfStereoIsDeinterleaved) {
    Bytes sound;
    for (const float sample : {0.0f, 0.5f, -0.25f, 1.0f, 2.0f, -1.0f}) {
        sound = aviwriter::join({sound, aviwriter::u32(std::bit_cast<std::uint32_t>(sample))});
    }
    SoundClip clip(session(), soundFile(kStereo, sound, sound.size()));
    const auto answer = clip.audio(0, 3, 2);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer.channels, (std::vector<std::vector<float>>{{0.0f, -0.25f, 2.0f}, {0.5f, 1.0f, -1.0f}}));
}

TEST_F(FloatSound, KeepsTheBitsOfSpecialValues) {
    const std::vector<std::uint32_t> special = {
        0x80000000,     // negative zero
        0x00000001,     // the smallest denormal
        0x807FFFFF,     // the largest negative denormal
        0x7F800000,     // infinity
        0xFF800000,     // negative infinity
        0x7FC12345,     // a quiet NaN with a payload
        0x7F800001,     // signalling NaNs
        0xFFA5A5A5,
    };
    Bytes sound;
    for (const std::uint32_t bits : special) {
        sound = aviwriter::join({sound, aviwriter::u32(bits), aviwriter::u32(bits)});
    }
    SoundClip clip(session(), soundFile(kStereo, sound, 12));
    EXPECT_TRUE(holds(clip.audio(0, 8, 2), SampleBits{special, special}));
}

TEST_F(FloatSound, OfMoreThanAThousandFramesIsDeinterleavedToo) {
    const Bytes sound = noise(kStereo, 5000);
    SoundClip clip(session(), soundFile(kStereo, sound, 4096));
    EXPECT_TRUE(holds(clip.audio(0, 5000, 2), referenceSound(kStereo, sound, 0, 5000)));
}

TEST_F(FloatSound, OfSixteenDeclaredBitsFillsHalfTheFrames) {
    const Bytes sound = noise(kStereo, 100);
    SoundClip clip(session(), soundFile(shortFormat(2, 16), {sound}, 200));
    EXPECT_TRUE(holds(clip.audio(0, 100, 2), floatsIn(firstOf(sound, 400), 2, 100)));
}

TEST_F(FloatSound, OfEightDeclaredBitsFillsAQuarterOfTheFrames) {
    const Bytes sound = noise(kStereo, 100);
    SoundClip clip(session(), soundFile(shortFormat(2, 8), {sound}, 400));
    EXPECT_TRUE(holds(clip.audio(0, 100, 2), floatsIn(firstOf(sound, 200), 2, 100)));
}

TEST_F(FloatSound, OfTwentyFourDeclaredBitsFillsThreeQuarters) {
    const Bytes sound = noise(kStereo, 100);
    SoundClip clip(session(), soundFile(shortFormat(2, 24), {sound}, 133));
    EXPECT_TRUE(holds(clip.audio(0, 100, 2), floatsIn(firstOf(sound, 600), 2, 100)));
}

// 30 bytes are 7.5 samples: two frames of three channels, and one channel of the third frame.
TEST_F(FloatSound, OfTooFewDeclaredBitsMayEndWithinAFrame) {
    const Bytes sound = noise({SampleFormat::float32, 3}, 10);
    SoundClip clip(session(), soundFile(shortFormat(3, 8), {sound}, 40));
    EXPECT_TRUE(holds(clip.audio(0, 10, 3), floatsIn(firstOf(sound, 30), 3, 10)));
}

TEST_F(FloatSound, OfTooFewDeclaredBitsShowsNoEarlierRequest) {
    const Bytes sound = noise(kStereo, 100);
    SoundClip clip(session(), soundFile(shortFormat(2, 16), {sound}, 200));
    clip.audio(0, 200, 2);
    EXPECT_TRUE(holds(clip.audio(0, 10, 2), floatsIn(firstOf(sound, 40), 2, 10)));
}

TEST_F(FloatSound, OfTooFewDeclaredBitsIsLocatedByTheDeclaredSize) {
    const Bytes sound = noise(kStereo, 100);
    SoundClip clip(session(), soundFile(shortFormat(2, 16), {sound}, 200));
    const Bytes fromFrameTen(sound.begin() + 40, sound.begin() + 80);
    EXPECT_TRUE(holds(clip.audio(10, 10, 2), floatsIn(fromFrameTen, 2, 10)));
}
