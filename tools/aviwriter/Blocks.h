// Building blocks of AVI files as plain bytes. A test builds a file in its byte order and overrides the one field that
// is wrong; the full writer (AviFileWriter.h) uses the same blocks.
//
//   Bytes file = riff("AVI ", {
//       list("hdrl", {
//           avih({.totalFrames = 1, .streams = 1}),
//           list("strl", {strh({.type = "vids", .length = 1}), strf(bytesOf(BitmapInfo{}))})}),
//       list("movi", {chunk("00dc", frame)}),
//       chunk("idx1", bytesOf(Idx1Entry{.offset = 4, .length = 100}))});
//
// Everything is little-endian. A four-character code is text of exactly four bytes; any other length throws
// std::invalid_argument. All functions are pure and thread-safe.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace aviwriter {

using Bytes = std::vector<std::uint8_t>;

// --- Plain values -------------------------------------------------------------------------------------------

Bytes u8(std::uint8_t value);
Bytes u16(std::uint16_t value);
Bytes u32(std::uint32_t value);
Bytes u64(std::uint64_t value);
std::uint32_t u32At(const Bytes& bytes, std::size_t position);     // throws std::out_of_range past the end
Bytes text(std::string_view characters);                          // without terminator
Bytes filled(std::size_t count, std::uint8_t value = 0);
Bytes join(const std::vector<Bytes>& parts);                      // join({a, b, c})
Bytes operator+(Bytes left, const Bytes& right);

// --- Chunks and lists ---------------------------------------------------------------------------------------

// Header, data and, if the data size is odd, one zero pad byte that the size does not count.
Bytes chunk(std::string_view id, const Bytes& data);

// The same bytes, but with `claimedSize` in the size field.
Bytes chunkClaiming(std::string_view id, std::uint32_t claimedSize, const Bytes& data);

// "LIST" or "RIFF" with its list type and its children, which are whole chunks.
Bytes list(std::string_view type, const std::vector<Bytes>& children);
Bytes riff(std::string_view type, const std::vector<Bytes>& children);

// `id` is "LIST" or "RIFF"; the size field, which correctly includes the list type, is `claimedSize`.
Bytes listClaiming(std::string_view id, std::string_view type, std::uint32_t claimedSize,
                   const std::vector<Bytes>& children);

// --- Records ------------------------------------------------------------------------------------------------
// The defaults describe a valid stream; `bytesOf` returns a record's bytes without a chunk header.

struct MainHeader {                                               // 56 bytes
    std::uint32_t microSecPerFrame = 40000;
    std::uint32_t maxBytesPerSec = 0;
    std::uint32_t paddingGranularity = 0;
    std::uint32_t flags = 0x10;                                   // has an index
    std::uint32_t totalFrames = 0;
    std::uint32_t initialFrames = 0;
    std::uint32_t streams = 1;
    std::uint32_t suggestedBufferSize = 0;
    std::uint32_t width = 16;
    std::uint32_t height = 16;
    std::array<std::uint32_t, 4> reserved{};
};

struct StreamHeader {                                             // 56 bytes
    std::string_view type = "vids";
    std::string_view handler = "QVAN";
    std::uint32_t flags = 0;
    std::uint16_t priority = 0;
    std::uint16_t language = 0;
    std::uint32_t initialFrames = 0;
    std::uint32_t scale = 1;                                      // rate / scale: frames or sample frames per second
    std::uint32_t rate = 25;
    std::uint32_t start = 0;
    std::uint32_t length = 0;                                     // frames, or sample frames
    std::uint32_t suggestedBufferSize = 0;
    std::uint32_t quality = 0xFFFFFFFFU;
    std::uint32_t sampleSize = 0;                                 // 0 for video, bytes per sample frame for sound
    std::int16_t left = 0;
    std::int16_t top = 0;
    std::int16_t right = 16;
    std::int16_t bottom = 16;
};

struct BitmapInfo {                                               // 40 bytes, followed by the codec's extra data
    std::uint32_t size = 40;
    std::int32_t width = 16;
    std::int32_t height = 16;
    std::uint16_t planes = 1;
    std::uint16_t bitCount = 24;
    std::string_view compression = "QVAN";
    std::uint32_t sizeImage = 0;
    std::int32_t xPelsPerMeter = 0;
    std::int32_t yPelsPerMeter = 0;
    std::uint32_t clrUsed = 0;
    std::uint32_t clrImportant = 0;
};

constexpr std::uint16_t kWaveFormatPcm = 1;
constexpr std::uint16_t kWaveFormatFloat = 3;
constexpr std::uint16_t kWaveFormatExtensible = 0xFFFE;

// Empty fields are computed from the others when the bytes are made.
struct WaveFormat {
    std::uint16_t formatTag = kWaveFormatPcm;                     // extensible: the tag inside the sub-format
    std::uint16_t channels = 2;
    std::uint32_t samplesPerSec = 48000;
    std::optional<std::uint32_t> avgBytesPerSec{};                // samplesPerSec * blockAlign
    std::optional<std::uint16_t> blockAlign{};                    // channels * (bitsPerSample / 8)
    std::uint16_t bitsPerSample = 16;
    std::optional<std::uint16_t> cbSize{};                        // bytes after the first 18: 0, extensible 22
    std::optional<std::uint16_t> validBitsPerSample{};            // bitsPerSample
    std::uint32_t channelMask = 0;
    std::optional<std::array<std::uint8_t, 16>> subFormat{};      // {formatTag-0000-0010-8000-00AA00389B71}
};

struct Idx1Entry {                                                // 16 bytes
    std::string_view chunkId = "00dc";
    std::uint32_t flags = 0x10;                                   // key frame
    std::uint32_t offset = 4;                                     // position of the chunk header from the "movi" type
    std::uint32_t length = 0;
};

struct SuperIndexEntry {                                          // 16 bytes
    std::uint64_t offset = 0;                                     // file position of the "ix##" chunk header
    std::uint32_t size = 0;                                       // of that chunk including its header
    std::uint32_t duration = 0;                                   // in the stream's ticks
};

struct SuperIndex {                                               // 24 bytes and the entries
    std::uint16_t longsPerEntry = 4;
    std::uint8_t indexSubType = 0;
    std::uint8_t indexType = 0;                                   // index of indexes
    std::optional<std::uint32_t> entriesInUse{};                  // the number of entries
    std::string_view chunkId = "00dc";
    std::array<std::uint32_t, 3> reserved{};
    std::vector<SuperIndexEntry> entries{};
};

constexpr std::uint32_t kNotKeyFrame = 0x80000000U;

struct StandardIndexEntry {                                       // 8 bytes
    std::uint32_t offset = 0;                                     // of the chunk's data, from baseOffset
    std::uint32_t size = 0;                                       // of the data; plus kNotKeyFrame if applicable
};

struct StandardIndex {                                            // 24 bytes and the entries
    std::uint16_t longsPerEntry = 2;
    std::uint8_t indexSubType = 0;
    std::uint8_t indexType = 1;                                   // index of chunks
    std::optional<std::uint32_t> entriesInUse{};                  // the number of entries
    std::string_view chunkId = "00dc";
    std::uint64_t baseOffset = 0;
    std::uint32_t reserved3 = 0;
    std::vector<StandardIndexEntry> entries{};
};

Bytes bytesOf(const MainHeader& header);
Bytes bytesOf(const StreamHeader& header);
Bytes bytesOf(const BitmapInfo& info);
Bytes bytesOf(const Idx1Entry& entry);
Bytes bytesOf(const SuperIndex& index);
Bytes bytesOf(const StandardIndex& index);

// The three sizes of sound formats: 16 bytes (no cbSize), 18 bytes, and 40 bytes with tag 0xFFFE.
Bytes pcmWaveFormat(const WaveFormat& format);
Bytes waveFormatEx(const WaveFormat& format);
Bytes waveFormatExtensible(const WaveFormat& format);

// --- Whole chunks around the records ------------------------------------------------------------------------

Bytes avih(const MainHeader& header);
Bytes strh(const StreamHeader& header);
Bytes strf(const Bytes& format, const Bytes& extraData = {});
Bytes idx1(const std::vector<Idx1Entry>& entries);
Bytes indx(const SuperIndex& index);
Bytes ix(std::string_view id, const StandardIndex& index);        // id "ix00" ...
Bytes odml(std::uint32_t totalFrames);                            // the list with its 248-byte "dmlh"

// --- Finding and changing a position in a finished file -----------------------------------------------------

// Position of the n-th occurrence (from 0) of a four-character code; throws std::out_of_range if there is none.
std::size_t positionOf(const Bytes& file, std::string_view fourcc, std::size_t n = 0);

// Replaces the bytes at `position`; throws std::out_of_range if they are not inside the file.
void overwrite(Bytes& file, std::size_t position, const Bytes& with);

}  // namespace aviwriter
