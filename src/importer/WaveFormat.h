// The audio format record of an "auds" stream, as stored in AVI files.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#pragma pack(push, 1)

struct Guid {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::array<std::uint8_t, 8> data4 = {};

    bool operator==(const Guid&) const = default;
};
static_assert(sizeof(Guid) == 16);

// The longest of the three forms a file may have; after a shorter one the rest is zero.
struct WaveFormatExtensible {
    std::uint16_t wFormatTag = 0;
    std::uint16_t nChannels = 0;
    std::uint32_t nSamplesPerSec = 0;
    std::uint32_t nAvgBytesPerSec = 0;
    std::uint16_t nBlockAlign = 0;
    std::uint16_t wBitsPerSample = 0;
    std::uint16_t cbSize = 0;               // bytes after this field
    std::uint16_t wValidBitsPerSample = 0;
    std::uint32_t dwChannelMask = 0;
    Guid SubFormat;
};
static_assert(sizeof(WaveFormatExtensible) == 40);
static_assert(offsetof(WaveFormatExtensible, cbSize) == 16 && offsetof(WaveFormatExtensible, SubFormat) == 24);

#pragma pack(pop)

inline constexpr std::size_t kMinWaveFormatBytes = 16;   // a format without cbSize
inline constexpr std::uint16_t kWaveFormatPcm = 1;
inline constexpr std::uint16_t kWaveFormatIeeeFloat = 3;
inline constexpr std::uint16_t kWaveFormatExtensibleTag = 0xFFFE;

// The sub-format equivalent to a plain format tag.
constexpr Guid subFormatOfTag(std::uint16_t tag) {
    return {tag, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
}

// The format's own sub-format, or the one equivalent to its tag.
constexpr Guid subFormatOf(const WaveFormatExtensible& format) {
    return format.wFormatTag == kWaveFormatExtensibleTag ? format.SubFormat : subFormatOfTag(format.wFormatTag);
}

// "00000001-0000-0010-8000-00aa00389b71".
std::string guidText(const Guid& guid);
