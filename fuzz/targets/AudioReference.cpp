#include "targets/AudioReference.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

namespace fuzz {

namespace {

constexpr std::size_t kExtensibleSize = 40;
constexpr std::uint8_t kGuidTail[] = {0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80, 0x00,
                                      0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};   // after the tag's two bytes
constexpr std::int32_t kLabels[] = {100, 101, 102, 103, 104, 105, 107, 108, 106,
                                    109, 110, 111, 112, 114, 113, 115, 117, 116};

std::uint32_t number(const Bytes& bytes, std::size_t at, std::size_t width) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < width; ++i) {
        value |= std::uint32_t{bytes[at + i]} << (8 * i);
    }
    return value;
}

// The 40 bytes of the longest form. Bytes that the record lacks, or does not count as its own, are zero.
Bytes fullRecord(ByteView record) {
    std::size_t size = std::min<std::size_t>(record.size(), 18);
    if (record.size() >= 18) {
        const std::size_t stated = 18u + record[16] + 256u * record[17];
        size = std::min({stated, kExtensibleSize, record.size()});
    }
    Bytes full(record.begin(), record.begin() + static_cast<std::ptrdiff_t>(size));
    full.resize(kExtensibleSize);
    return full;
}

std::vector<std::int32_t> labelsOf(std::uint32_t mask, std::uint32_t channels) {
    std::vector<std::int32_t> labels;
    for (unsigned bit = 0; bit < 32; ++bit) {
        if ((mask >> bit & 1) != 0 && labels.size() < channels) {
            labels.push_back(bit < std::size(kLabels) ? kLabels[bit] : 0);
        }
    }
    return labels;
}

}  // namespace

SoundFormat soundFormatOf(ByteView record) {
    const Bytes full = fullRecord(record);
    const bool extensible = number(full, 0, 2) == 0xFFFE;
    std::uint32_t tag = number(full, 0, 2);
    bool known = true;
    if (extensible) {
        tag = number(full, 24, 2);
        known = std::memcmp(full.data() + 26, kGuidTail, sizeof kGuidTail) == 0;
    }
    SoundFormat format;
    format.isFloat = tag == 3;
    format.channels = number(full, 2, 2);
    format.rate = number(full, 4, 4);
    format.blockAlign = number(full, 12, 2);
    format.bits = number(full, 14, 2);
    const bool goodBits = format.bits == 8 || format.bits == 16 || format.bits == 24 || format.bits == 32;
    format.valid = record.size() >= 16 && known && (tag == 1 || tag == 3) && format.channels <= 32 && goodBits &&
                   format.blockAlign == format.channels * (format.bits / 8);
    const std::uint32_t usual = format.channels == 2 || format.channels == 6 ? 0xFFFFFFFF : 0;
    format.labels = labelsOf(extensible ? number(full, 20, 4) : usual, format.channels);
    return format;
}

std::uint32_t soundSample(const SoundFormat& format, ByteView stream, std::int64_t position, std::uint32_t frames,
                          std::uint32_t frame, std::uint32_t channel) {
    const std::uint64_t first = format.blockAlign * static_cast<std::uint64_t>(position);
    const std::size_t width = format.isFloat ? 4 : format.bits / 8;
    const std::size_t at = (std::size_t{frame} * format.channels + channel) * width;
    if (format.isFloat && at + width > std::size_t{format.blockAlign} * frames) {
        return 0;   // a float stream whose stated frame size is too small
    }
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < width; ++i) {
        const std::uint64_t byte = first + at + i;
        const bool exists = first < stream.size() && byte < stream.size();
        value |= (exists ? std::uint32_t{stream[static_cast<std::size_t>(byte)]} : 0u) << (8 * i);
    }
    if (format.isFloat) {
        return value;
    }
    if (format.bits == 8) {
        value ^= 0x80;   // missing bytes become the lowest sample, not silence
    }
    const auto signedValue = static_cast<std::int32_t>(value << (32 - format.bits)) >> (32 - format.bits);
    const double scale = static_cast<double>(std::uint64_t{1} << (format.bits - 1));
    return std::bit_cast<std::uint32_t>(static_cast<float>(signedValue / scale));
}

}  // namespace fuzz
