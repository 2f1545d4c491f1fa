#include "avi/LegacyIndex.h"

#include "avi/AviRecords.h"
#include "avi/RecordReader.h"

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
    RecordReader records(reader, idx1.dataPosition(), idx1.size);
    // Entries that the file no longer has would be all zero and belong to no stream.
    while (records.remaining() > 0) {
        for (const avi::LegacyIndexEntry& entry : records.nextRun<avi::LegacyIndexEntry>(records.remaining())) {
            if (AviStream* stream = streamOfPair[digitPairIn(entry.ckid)]) {
                stream->addIdx1Chunk(base + entry.dwChunkOffset, entry.dwChunkLength,
                                     (entry.dwFlags & avi::AVIIF_KEYFRAME) != 0);
            }
        }
    }
}
