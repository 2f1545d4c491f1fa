#include "avi/LegacyIndex.h"

#include "avi/AviRecords.h"
#include "avi/RecordReader.h"

#include <algorithm>

namespace {

// A chunk id's first byte holds the tens of the stream number and its second byte the ones. From this number on the
// bytes would begin again, and those streams get no entries.
constexpr std::uint32_t kDigitPairs = 256 * 10;

/// kDigitPairs when the second byte is no digit.
std::uint32_t digitPairIn(std::uint32_t chunkId) {
    const std::uint32_t tens = (chunkId - '0') & 0xFF;
    const std::uint32_t ones = (chunkId >> 8 & 0xFF) - '0';
    return ones > 9 ? kDigitPairs : tens * 10 + ones;
}

// Below this a read less is worth more than the memory: each of them can be a journey over a network.
constexpr std::uint64_t kSmallestPiece = 64 * 1024;

// An entry takes as many bytes in the file as in the list that is kept: a piece with all of them would double the
// memory.
constexpr std::uint64_t kMostPieces = 8;

/// So that there are at most kMostPieces, unless each is as large as any may be.
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
    // An entry counts its chunk's header, which the list of chunks leaves out.
    const std::uint64_t base = movi.position + avi::kChunkHeaderSize + avi::kChunkHeaderSize;
    const std::uint64_t bytes = reader.existing(idx1.dataPosition(), idx1.size);
    std::uint64_t bytesLeft = bytes;  // it is read once: nothing needs a bound
    RecordReader records(reader, bytesLeft, idx1.dataPosition(), bytes, pieceSizeFor(bytes));
    // Entries that the file no longer has would be all zero and belong to no stream.
    while (records.remaining() > 0) {
        for (const avi::LegacyIndexEntry& entry : records.next<avi::LegacyIndexEntry>(records.remaining())) {
            if (AviStream* stream = streamOfPair[digitPairIn(entry.ckid)]) {
                stream->addIdx1Chunk(base + entry.dwChunkOffset, entry.dwChunkLength,
                                     (entry.dwFlags & avi::AVIIF_KEYFRAME) != 0);
            }
        }
    }
}
