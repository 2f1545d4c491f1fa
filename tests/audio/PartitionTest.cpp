// Reading a sound in parts, of any size and in any order, delivers the same samples as reading it at once.
#include "audio/support/SoundTest.h"

#include <algorithm>
#include <random>

using aviwriter::SampleFormat;

namespace {

constexpr std::uint32_t kPartitionFrames = 600;
constexpr std::size_t kChunkBytes = 37;

class Partition : public SoundTest, public ::testing::WithParamInterface<SampleFormat> {
protected:
    SoundFormat m_format = {GetParam(), 3};
    Bytes m_sound = noise(m_format, kPartitionFrames);
    SoundClip m_clip = SoundClip(session(), soundFile(m_format, m_sound, kChunkBytes));

    SampleBits expected(std::uint64_t position, std::uint32_t frames) const {
        return referenceSound(m_format, m_sound, position, frames);
    }
};

// Random sizes, some of them 0, that add up to all frames.
std::vector<std::uint32_t> randomSizes(std::mt19937& random) {
    std::vector<std::uint32_t> sizes;
    std::uint32_t left = kPartitionFrames;
    while (left != 0) {
        sizes.push_back(std::min(static_cast<std::uint32_t>(random() % 41), left));
        left -= sizes.back();
    }
    return sizes;
}

}  // namespace

TEST_P(Partition, ReadsTheSameAsAtOnce) {
    for (std::uint32_t seed = 1; seed <= 5; ++seed) {
        std::mt19937 random(seed);
        std::uint32_t position = 0;
        for (const std::uint32_t size : randomSizes(random)) {
            ASSERT_TRUE(holds(m_clip.audio(position, size, 3), expected(position, size)))
                << "seed " << seed << ", position " << position << ", size " << size;
            position += size;
        }
    }
}

TEST_P(Partition, ReadsTheSameInAnyOrder) {
    std::mt19937 random(7);
    for (int i = 0; i < 150; ++i) {
        const auto position = static_cast<std::uint32_t>(random() % kPartitionFrames);
        const auto size = static_cast<std::uint32_t>(random() % 80);
        ASSERT_TRUE(holds(m_clip.audio(position, size, 3), expected(position, size)))
            << "request " << i << ", position " << position << ", size " << size;
    }
}

TEST_P(Partition, ContinuesWhereTheLastRequestEnded) {
    std::mt19937 random(9);
    std::uint32_t next = 0;
    for (int i = 0; i < 150; ++i) {
        const bool jumps = random() % 4 == 0;
        const auto size = static_cast<std::uint32_t>(random() % 30);
        next = jumps ? static_cast<std::uint32_t>(random() % kPartitionFrames) : next;
        const PrAudioSample asked = jumps ? PrAudioSample{next} : -1 - static_cast<PrAudioSample>(random() % 1000);
        ASSERT_TRUE(holds(m_clip.audio(asked, size, 3), expected(next, size)))
            << "request " << i << ", asked for " << asked << ", size " << size;
        next += size;
    }
}

INSTANTIATE_TEST_SUITE_P(Sound, Partition,
                         ::testing::Values(SampleFormat::pcm8, SampleFormat::pcm16, SampleFormat::pcm24,
                                           SampleFormat::pcm32, SampleFormat::float32));
