// Deinterleaving float sound: compares every number of channels and frames with the definition.
#include "importer/Deinterleave.h"

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>

// Defined in PortableDeinterleave.cpp.
decltype(deinterleave32) portableDeinterleave32;
decltype(makeSigned8) portableMakeSigned8;

namespace {

// Sample f of channel c has the bits f * channels + c.
std::vector<std::uint8_t> interleaved(std::uint32_t channels, std::uint32_t frames) {
    std::vector<std::uint32_t> samples(std::size_t{channels} * frames);
    std::iota(samples.begin(), samples.end(), 0u);
    std::vector<std::uint8_t> bytes(samples.size() * 4 + 1);
    std::memcpy(bytes.data() + 1, samples.data(), samples.size() * 4);   // at an odd address
    return bytes;
}

// Channels with wrong samples, or with writes outside their memory.
std::vector<std::uint32_t> wrongChannels(decltype(deinterleave32) deinterleave, std::uint32_t channels,
                                         std::uint32_t frames) {
    constexpr std::uint32_t kGuard = 0xCDCDCDCD;
    const std::vector<std::uint8_t> bytes = interleaved(channels, frames);
    std::vector<std::vector<float>> outs(channels, std::vector<float>(frames + 1));
    std::vector<float*> buffers;
    for (std::vector<float>& out : outs) {
        std::memset(out.data(), 0xCD, out.size() * 4);
        buffers.push_back(out.data());
    }
    deinterleave(bytes.data() + 1, std::size_t{channels} * frames * 4, buffers.data(), channels, frames);
    std::vector<std::uint32_t> wrong;
    for (std::uint32_t channel = 0; channel < channels; ++channel) {
        std::vector<std::uint32_t> expected;
        for (std::uint32_t frame = 0; frame < frames; ++frame) {
            expected.push_back(frame * channels + channel);
        }
        expected.push_back(kGuard);
        if (std::memcmp(expected.data(), buffers[channel], expected.size() * 4) != 0) {
            wrong.push_back(channel);
        }
    }
    return wrong;
}

}  // namespace

TEST(Deinterleave, PutsEverySampleInItsPlaceAndNoneElsewhere) {
    for (std::uint32_t channels = 1; channels <= 32; ++channels) {
        for (const std::uint32_t frames : {1u, 3u, 4u, 15u, 16u, 17u, 63u, 1023u, 1024u, 1025u, 1041u, 2051u}) {
            for (auto* deinterleave : {deinterleave32, portableDeinterleave32}) {
                EXPECT_EQ(wrongChannels(deinterleave, channels, frames), std::vector<std::uint32_t>{})
                    << channels << " channels, " << frames << " frames";
            }
        }
    }
}

TEST(Deinterleave, FlipsTheSignOfEveryByteAndNoneElsewhere) {
    for (const std::size_t count : {0u, 1u, 63u, 64u, 65u, 127u, 128u, 1000u}) {
        std::vector<std::uint8_t> bytes(count + 1);
        std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
        std::vector<std::uint8_t> expected;
        for (std::size_t i = 0; i < count; ++i) {
            expected.push_back(static_cast<std::uint8_t>(i % 256 < 128 ? i % 256 + 128 : i % 256 - 128));
        }
        expected.push_back(static_cast<std::uint8_t>(count));
        std::vector<std::uint8_t> again = bytes;
        makeSigned8(bytes.data(), count);
        EXPECT_EQ(bytes, expected) << count;
        portableMakeSigned8(again.data(), count);
        EXPECT_EQ(again, expected) << count;
    }
}
