// The records of an AVI file as stored in it, little-endian, and the constants that belong to them. Their natural
// layout is that of the file; only the record with a misaligned 64-bit field needs packing.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace avi {

static_assert(std::endian::native == std::endian::little, "records are copied from the file as they are");

constexpr std::uint64_t kChunkHeaderSize = 8;      // chunk id and data size
constexpr std::uint64_t kListTypeSize = 4;         // after the chunk header of a list, counted in its data size
constexpr std::size_t kBitmapInfoHeaderSize = 40;  // size of the fixed part of every "vids" format
constexpr std::size_t kWaveFormatExSize = 18;      // size of the fixed part of every "auds" format

// "avih"
struct AVIMAINHEADER {
    std::uint32_t dwMicroSecPerFrame;
    std::uint32_t dwMaxBytesPerSec;
    std::uint32_t dwPaddingGranularity;
    std::uint32_t dwFlags;
    std::uint32_t dwTotalFrames;
    std::uint32_t dwInitialFrames;
    std::uint32_t dwStreams;
    std::uint32_t dwSuggestedBufferSize;
    std::uint32_t dwWidth;
    std::uint32_t dwHeight;
    std::uint32_t dwReserved[4];
};
static_assert(sizeof(AVIMAINHEADER) == 56);
static_assert(offsetof(AVIMAINHEADER, dwStreams) == 24);
static_assert(offsetof(AVIMAINHEADER, dwReserved) == 40);

struct FrameRectangle {
    std::int16_t left;
    std::int16_t top;
    std::int16_t right;
    std::int16_t bottom;
};

// "strh"
struct AVISTREAMHEADER {
    std::uint32_t fccType;
    std::uint32_t fccHandler;
    std::uint32_t dwFlags;
    std::uint16_t wPriority;
    std::uint16_t wLanguage;
    std::uint32_t dwInitialFrames;
    std::uint32_t dwScale;
    std::uint32_t dwRate;
    std::uint32_t dwStart;
    std::uint32_t dwLength;
    std::uint32_t dwSuggestedBufferSize;
    std::uint32_t dwQuality;
    std::uint32_t dwSampleSize;
    FrameRectangle rcFrame;
};
static_assert(sizeof(AVISTREAMHEADER) == 56);
static_assert(offsetof(AVISTREAMHEADER, dwScale) == 20);
static_assert(offsetof(AVISTREAMHEADER, dwLength) == 32);
static_assert(offsetof(AVISTREAMHEADER, rcFrame) == 48);

// "dmlh"
struct ExtendedHeader {
    std::uint32_t dwTotalFrames;
    std::uint32_t dwReserved[61];
};
static_assert(sizeof(ExtendedHeader) == 248);

// An entry of "idx1"
struct LegacyIndexEntry {
    std::uint32_t ckid;
    std::uint32_t dwFlags;
    std::uint32_t dwChunkOffset;
    std::uint32_t dwChunkLength;
};
static_assert(sizeof(LegacyIndexEntry) == 16);
constexpr std::uint32_t AVIIF_KEYFRAME = 0x10;

// Start of "indx"
struct SuperIndexHeader {
    std::uint16_t wLongsPerEntry;
    std::uint8_t bIndexSubType;
    std::uint8_t bIndexType;
    std::uint32_t nEntriesInUse;
    std::uint32_t dwChunkId;
    std::uint32_t dwReserved[3];
};
static_assert(sizeof(SuperIndexHeader) == 24);
constexpr std::uint16_t kSuperIndexLongsPerEntry = 4;

struct SuperIndexEntry {
    std::uint64_t qwOffset;
    std::uint32_t dwSize;
    std::uint32_t dwDuration;
};
static_assert(sizeof(SuperIndexEntry) == 16);

#pragma pack(push, 4)
// Start of "ix##"
struct StdIndexHeader {
    std::uint16_t wLongsPerEntry;
    std::uint8_t bIndexSubType;
    std::uint8_t bIndexType;
    std::uint32_t nEntriesInUse;
    std::uint32_t dwChunkId;
    std::uint64_t qwBaseOffset;
    std::uint32_t dwReserved3;
};
#pragma pack(pop)
static_assert(sizeof(StdIndexHeader) == 24);
static_assert(offsetof(StdIndexHeader, qwBaseOffset) == 12);
constexpr std::uint16_t kStdIndexLongsPerEntry = 2;

struct StdIndexEntry {
    std::uint32_t dwOffset;
    std::uint32_t dwSize;
};
static_assert(sizeof(StdIndexEntry) == 8);
constexpr std::uint32_t kStdIndexSizeMask = 0x7FFFFFFF;
constexpr std::uint32_t kStdIndexNotKeyFrame = 0x80000000;

}  // namespace avi
