#include "avi/LegacyIndex.h"

#include "avi/AviRecords.h"
#include "avi/RecordReader.h"

#include <optional>

namespace {

// A chunk id's first byte holds the tens of the stream number, and from number 2080 on begins again at zero; its
// second byte holds the ones. Numbers this far apart share their two bytes, and then also their entries.
constexpr std::uint32_t kDigitPairs = 256 * 10;

std::uint32_t digitPairOf(std::uint32_t streamNumber) {
    return streamNumber % kDigitPairs;
}

std::optional<std::uint32_t> digitPairIn(std::uint32_t chunkId) {
    const std::uint32_t tens = (chunkId - '0') & 0xFF;
    const std::uint32_t ones = (chunkId >> 8 & 0xFF) - '0';
    if (ones > 9) {
        return std::nullopt;
    }
    return tens * 10 + ones;
}

}  // namespace

void readLegacyIndex(ChunkReader& reader, const ChunkNode& idx1, const ChunkNode& movi,
                     const std::vector<std::unique_ptr<AviStream>>& streams) {
    std::vector<std::vector<AviStream*>> streamsOfPair(kDigitPairs);
    for (const auto& stream : streams) {
        streamsOfPair[digitPairOf(stream->streamNumber())].push_back(stream.get());
    }
    // An entry counts its chunk's header, which the list of chunks leaves out.
    const std::uint64_t base = movi.position + avi::kChunkHeaderSize + avi::kChunkHeaderSize;
    RecordReader records(reader, idx1.dataPosition(), idx1.size);
    // Entries that the file no longer has would be all zero and belong to no stream.
    while (records.remaining() > 0) {
        const auto entry = records.next<avi::LegacyIndexEntry>();
        if (const auto pair = digitPairIn(entry.ckid)) {
            for (AviStream* stream : streamsOfPair[*pair]) {
                stream->addIdx1Chunk(base + entry.dwChunkOffset, entry.dwChunkLength,
                                     (entry.dwFlags & avi::AVIIF_KEYFRAME) != 0);
            }
        }
    }
}
