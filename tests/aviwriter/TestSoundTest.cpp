#include "aviwriter/TestSound.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>

using namespace aviwriter;

namespace {

constexpr std::uint32_t kRate = 48000;
constexpr std::uint64_t kAfterTheTick = 1000;

TEST(TestSound, EveryChannelIsASineOfItsPitch) {
    for (const std::uint16_t channel : {std::uint16_t{0}, std::uint16_t{5}, std::uint16_t{31}}) {
        const double pitch = 220 + 110 * channel;
        for (std::uint64_t position = 240; position < kRate; position += 7) {
            const double angle = 2 * 3.14159265358979323846 * pitch * static_cast<double>(position) / kRate;
            ASSERT_NEAR(testSample(channel, position, kRate) / 2147483648.0, 0.5 * std::sin(angle), 0.00001)
                << "channel " << channel << " position " << position;
        }
    }
}

TEST(TestSound, EverySecondBeginsWithAFiveMillisecondTick) {
    for (const std::uint64_t second : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{100000}}) {
        EXPECT_EQ(testSample(0, second * kRate, kRate), 0x70000000);
        EXPECT_EQ(testSample(0, second * kRate + 4, kRate), -0x70000000);
        EXPECT_EQ(std::abs(testSample(0, second * kRate + 239, kRate)), 0x70000000);
        EXPECT_LT(std::abs(testSample(0, second * kRate + 240, kRate)), 0x41000000);
    }
}

// The first sample after the tick at 1/4 of a turn of channel 0: the peak, 0x40000000.
constexpr std::uint32_t kPeakRate = 44000;
constexpr std::uint64_t kPeak = 200 * 2 + 50;

TEST(TestSound, EightBitsAreUnsigned) {
    EXPECT_EQ(testSound(SampleFormat::pcm8, 1, kPeakRate, kPeak, 1), (Bytes{0xC0}));
    EXPECT_EQ(testSound(SampleFormat::pcm8, 1, kPeakRate, kPeak + 100, 1), (Bytes{0x40}));
}

TEST(TestSound, SixteenBitsAreSignedLittleEndian) {
    EXPECT_EQ(testSound(SampleFormat::pcm16, 1, kPeakRate, kPeak, 1), (Bytes{0x00, 0x40}));
    EXPECT_EQ(testSound(SampleFormat::pcm16, 1, kPeakRate, kPeak + 100, 1), (Bytes{0x00, 0xC0}));
}

TEST(TestSound, TwentyFourBitsAreSignedLittleEndian) {
    EXPECT_EQ(testSound(SampleFormat::pcm24, 1, kPeakRate, kPeak, 1), (Bytes{0x00, 0x00, 0x40}));
    EXPECT_EQ(testSound(SampleFormat::pcm24, 1, kPeakRate, kPeak + 100, 1), (Bytes{0x00, 0x00, 0xC0}));
}

TEST(TestSound, ThirtyTwoBitsAreSignedLittleEndian) {
    EXPECT_EQ(testSound(SampleFormat::pcm32, 1, kPeakRate, kPeak, 1), (Bytes{0x00, 0x00, 0x00, 0x40}));
    EXPECT_EQ(testSound(SampleFormat::pcm32, 1, kPeakRate, kPeak + 100, 1), (Bytes{0x00, 0x00, 0x00, 0xC0}));
}

TEST(TestSound, FloatsAreFractionsOfFullScale) {
    EXPECT_EQ(testSound(SampleFormat::float32, 1, kPeakRate, kPeak, 1), u32(std::bit_cast<std::uint32_t>(0.5F)));
    EXPECT_EQ(testSound(SampleFormat::float32, 1, kPeakRate, kPeak + 100, 1),
              u32(std::bit_cast<std::uint32_t>(-0.5F)));
}

TEST(TestSound, ChannelsAreInterleaved) {
    const auto sample = [](std::uint16_t channel, std::uint64_t position) {
        return u32(static_cast<std::uint32_t>(testSample(channel, position, kRate)));
    };
    EXPECT_EQ(testSound(SampleFormat::pcm32, 3, kRate, kAfterTheTick, 2),
              join({sample(0, kAfterTheTick), sample(1, kAfterTheTick), sample(2, kAfterTheTick),
                    sample(0, kAfterTheTick + 1), sample(1, kAfterTheTick + 1), sample(2, kAfterTheTick + 1)}));
}

TEST(TestSound, SoundMadeInPiecesIsTheSame) {
    EXPECT_EQ(testSound(SampleFormat::pcm24, 2, kRate, 0, 100) + testSound(SampleFormat::pcm24, 2, kRate, 100, 157),
              testSound(SampleFormat::pcm24, 2, kRate, 0, 257));
}

}  // namespace
