#include "avi/LegacyIndex.h"

#include "avi/AviRecords.h"
#include "avi/RecordReader.h"

#include <algorithm>

namespace {

// The first byte of a chunk id holds the tens of the stream number, the second byte the ones. From this number on the
// bytes would repeat; such streams get no entries.
constexpr std::uint32_t kDigitPairs = 256 * 10;

// Returns kDigitPairs if the second byte is not a digit.
std::uint32_t digitPairIn(std::uint32_t chunkId) {
    const std::uint32_t tens = (chunkId - '0') & 0xFF;
    const std::uint32_t ones = (chunkId >> 8 & 0xFF) - '0';
    return ones > 9 ? kDigitPairs : tens * 10 + ones;
}

// Below this size, saving a read is worth more than the memory: each read can be a network round trip.
constexpr std::uint64_t kSmallestPiece = 64 * 1024;

// An entry takes as many bytes in the file as in memory, so reading all entries as one piece would double the memory.
constexpr std::uint64_t kMostPieces = 8;

// At most kMostPieces pieces, unless they would exceed the largest size.
std::uint64_t pieceSizeFor(std::uint64_t indexBytes) {
    constexpr std::uint64_t entrySize = sizeof(avi::LegacyIndexEntry);
    const std::uint64_t entries = (indexBytes + entrySize - 1) / entrySize;
    const std::uint64_t share = (entries + kMostPieces - 1) / kMostPieces * entrySize;
    return std::clamp(share, kSmallestPiece, RecordReader::kLargestPiece);
}

}  // namespace

void readLegacyIndex(ChunkReader& reader, const ChunkNode& idx1, const ChunkNode& movi,
                     const std::vector<std::unique_ptr<AviStream>>& streams) {
    std::vector<AviStream*> streamOfPair(kDigitPairs + 1, nullptr);
    for (const auto& stream : streams) {
        if (stream->streamNumber() < kDigitPairs) {
            streamOfPair[stream->streamNumber()] = stream.get();
        }
    }
    // Offsets of entries point at chunk headers; the list stores positions of the data.
    const std::uint64_t base = movi.position + avi::kChunkHeaderSize + avi::kChunkHeaderSize;
    const std::uint64_t bytes = reader.existing(idx1.dataPosition(), idx1.size);
    std::uint64_t bytesLeft = bytes;  // the index is read once and needs no limit
    RecordReader records(reader, bytesLeft, idx1.dataPosition(), bytes, pieceSizeFor(bytes));
    // Missing entries would be all zero and belong to no stream.
    while (records.remaining() > 0) {
        for (const avi::LegacyIndexEntry& entry : records.next<avi::LegacyIndexEntry>(records.remaining())) {
            if (AviStream* stream = streamOfPair[digitPairIn(entry.ckid)]) {
                stream->addIdx1Chunk(base + entry.dwChunkOffset, entry.dwChunkLength,
                                     (entry.dwFlags & avi::AVIIF_KEYFRAME) != 0);
            }
        }
    }
}
