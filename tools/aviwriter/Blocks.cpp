#include "aviwriter/Blocks.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace aviwriter {

namespace {

void append(Bytes& bytes, std::uint64_t value, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
}

Bytes littleEndian(std::uint64_t value, std::size_t count) {
    Bytes bytes;
    append(bytes, value, count);
    return bytes;
}

Bytes s16(std::int16_t value) {
    return u16(static_cast<std::uint16_t>(value));
}

Bytes s32(std::int32_t value) {
    return u32(static_cast<std::uint32_t>(value));
}

Bytes fourcc(std::string_view code) {
    if (code.size() != 4) {
        throw std::invalid_argument("not a four-character code: '" + std::string(code) + "'");
    }
    return text(code);
}

Bytes listBody(std::string_view type, const std::vector<Bytes>& children) {
    return fourcc(type) + join(children);
}

std::uint16_t blockAlignOf(const WaveFormat& format) {
    return format.blockAlign.value_or(static_cast<std::uint16_t>(format.channels * (format.bitsPerSample / 8)));
}

Bytes firstSixteen(const WaveFormat& format, std::uint16_t tag) {
    const std::uint16_t blockAlign = blockAlignOf(format);
    return join({u16(tag), u16(format.channels), u32(format.samplesPerSec),
                 u32(format.avgBytesPerSec.value_or(format.samplesPerSec * blockAlign)), u16(blockAlign),
                 u16(format.bitsPerSample)});
}

Bytes subFormatOf(const WaveFormat& format) {
    if (format.subFormat) {
        return Bytes(format.subFormat->begin(), format.subFormat->end());
    }
    return u32(format.formatTag) + Bytes{0x00, 0x00, 0x10, 0x00, 0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};
}

}  // namespace

Bytes u8(std::uint8_t value) {
    return littleEndian(value, 1);
}

Bytes u16(std::uint16_t value) {
    return littleEndian(value, 2);
}

Bytes u32(std::uint32_t value) {
    return littleEndian(value, 4);
}

Bytes u64(std::uint64_t value) {
    return littleEndian(value, 8);
}

std::uint32_t u32At(const Bytes& bytes, std::size_t position) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) {
        value = value << 8 | bytes.at(position + i);
    }
    return value;
}

Bytes text(std::string_view characters) {
    return Bytes(characters.begin(), characters.end());
}

Bytes filled(std::size_t count, std::uint8_t value) {
    return Bytes(count, value);
}

Bytes join(const std::vector<Bytes>& parts) {
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes chunk(std::string_view id, const Bytes& data) {
    return chunkClaiming(id, static_cast<std::uint32_t>(data.size()), data);
}

Bytes chunkClaiming(std::string_view id, std::uint32_t claimedSize, const Bytes& data) {
    return join({fourcc(id), u32(claimedSize), data, filled(data.size() % 2)});
}

Bytes list(std::string_view type, const std::vector<Bytes>& children) {
    return chunk("LIST", listBody(type, children));
}

Bytes riff(std::string_view type, const std::vector<Bytes>& children) {
    return chunk("RIFF", listBody(type, children));
}

Bytes listClaiming(std::string_view id, std::string_view type, std::uint32_t claimedSize,
                   const std::vector<Bytes>& children) {
    return chunkClaiming(id, claimedSize, listBody(type, children));
}

Bytes bytesOf(const MainHeader& header) {
    return join({u32(header.microSecPerFrame), u32(header.maxBytesPerSec), u32(header.paddingGranularity),
                 u32(header.flags), u32(header.totalFrames), u32(header.initialFrames), u32(header.streams),
                 u32(header.suggestedBufferSize), u32(header.width), u32(header.height), u32(header.reserved[0]),
                 u32(header.reserved[1]), u32(header.reserved[2]), u32(header.reserved[3])});
}

Bytes bytesOf(const StreamHeader& header) {
    return join({fourcc(header.type), fourcc(header.handler), u32(header.flags), u16(header.priority),
                 u16(header.language), u32(header.initialFrames), u32(header.scale), u32(header.rate),
                 u32(header.start), u32(header.length), u32(header.suggestedBufferSize), u32(header.quality),
                 u32(header.sampleSize), s16(header.left), s16(header.top), s16(header.right), s16(header.bottom)});
}

Bytes bytesOf(const BitmapInfo& info) {
    return join({u32(info.size), s32(info.width), s32(info.height), u16(info.planes), u16(info.bitCount),
                 fourcc(info.compression), u32(info.sizeImage), s32(info.xPelsPerMeter), s32(info.yPelsPerMeter),
                 u32(info.clrUsed), u32(info.clrImportant)});
}

Bytes bytesOf(const Idx1Entry& entry) {
    return join({fourcc(entry.chunkId), u32(entry.flags), u32(entry.offset), u32(entry.length)});
}

// Some tests have indexes with a million entries; these are appended in place.
Bytes bytesOf(const SuperIndex& index) {
    const auto count = static_cast<std::uint32_t>(index.entries.size());
    Bytes bytes = join({u16(index.longsPerEntry), u8(index.indexSubType), u8(index.indexType),
                        u32(index.entriesInUse.value_or(count)), fourcc(index.chunkId), u32(index.reserved[0]),
                        u32(index.reserved[1]), u32(index.reserved[2])});
    for (const SuperIndexEntry& entry : index.entries) {
        append(bytes, entry.offset, 8);
        append(bytes, entry.size, 4);
        append(bytes, entry.duration, 4);
    }
    return bytes;
}

Bytes bytesOf(const StandardIndex& index) {
    const auto count = static_cast<std::uint32_t>(index.entries.size());
    Bytes bytes = join({u16(index.longsPerEntry), u8(index.indexSubType), u8(index.indexType),
                        u32(index.entriesInUse.value_or(count)), fourcc(index.chunkId), u64(index.baseOffset),
                        u32(index.reserved3)});
    for (const StandardIndexEntry& entry : index.entries) {
        append(bytes, entry.offset, 4);
        append(bytes, entry.size, 4);
    }
    return bytes;
}

Bytes pcmWaveFormat(const WaveFormat& format) {
    return firstSixteen(format, format.formatTag);
}

Bytes waveFormatEx(const WaveFormat& format) {
    return firstSixteen(format, format.formatTag) + u16(format.cbSize.value_or(0));
}

Bytes waveFormatExtensible(const WaveFormat& format) {
    return join({firstSixteen(format, kWaveFormatExtensible), u16(format.cbSize.value_or(22)),
                 u16(format.validBitsPerSample.value_or(format.bitsPerSample)), u32(format.channelMask),
                 subFormatOf(format)});
}

Bytes avih(const MainHeader& header) {
    return chunk("avih", bytesOf(header));
}

Bytes strh(const StreamHeader& header) {
    return chunk("strh", bytesOf(header));
}

Bytes strf(const Bytes& format, const Bytes& extraData) {
    return chunk("strf", format + extraData);
}

Bytes idx1(const std::vector<Idx1Entry>& entries) {
    Bytes data;
    for (const Idx1Entry& entry : entries) {
        data = std::move(data) + bytesOf(entry);
    }
    return chunk("idx1", data);
}

Bytes indx(const SuperIndex& index) {
    return chunk("indx", bytesOf(index));
}

Bytes ix(std::string_view id, const StandardIndex& index) {
    return chunk(id, bytesOf(index));
}

Bytes odml(std::uint32_t totalFrames) {
    return list("odml", {chunk("dmlh", u32(totalFrames) + filled(244))});
}

std::size_t positionOf(const Bytes& file, std::string_view code, std::size_t n) {
    const Bytes wanted = fourcc(code);
    auto found = std::search(file.begin(), file.end(), wanted.begin(), wanted.end());
    for (; n > 0 && found != file.end(); --n) {
        found = std::search(found + 1, file.end(), wanted.begin(), wanted.end());
    }
    if (found == file.end()) {
        throw std::out_of_range("the file has no such '" + std::string(code) + "'");
    }
    return static_cast<std::size_t>(found - file.begin());
}

void overwrite(Bytes& file, std::size_t position, const Bytes& with) {
    if (position > file.size() || with.size() > file.size() - position) {
        throw std::out_of_range("overwriting past the end of the file");
    }
    std::copy(with.begin(), with.end(), file.begin() + static_cast<std::ptrdiff_t>(position));
}

}  // namespace aviwriter
