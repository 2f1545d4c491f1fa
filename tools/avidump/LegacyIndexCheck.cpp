#include "avidump/LegacyIndexCheck.h"

#include <algorithm>
#include <cstdint>

namespace avidump {

namespace {

constexpr std::size_t kMostChecked = 1000;

// True if the chunk's header precedes its data. A chunk id begins with the two digits of its stream.
bool followsHeader(fileio::File& file, const AviChunk& chunk, std::uint32_t streamNumber) {
    std::uint8_t digits[2] = {};
    return file.seek(static_cast<std::int64_t>(chunk.offset - avi::kChunkHeaderSize)) &&
           file.read(digits, sizeof digits) == sizeof digits &&
           digits[0] == static_cast<std::uint8_t>('0' + streamNumber / 10) && digits[1] == '0' + streamNumber % 10;
}

}  // namespace

LegacyIndexCheck checkLegacyIndex(fileio::File& file, const AviStream& stream, bool all) {
    const ChunkList& chunks = stream.idx1Chunks();
    const std::size_t count = all ? chunks.size() : std::min(chunks.size(), kMostChecked);
    LegacyIndexCheck result;
    for (std::size_t i = 0; i < count; ++i) {
        const AviChunk chunk = chunks[chunks.size() * i / count];
        if (chunk.size > 0) {
            ++result.checked;
            result.astray += !followsHeader(file, chunk, stream.streamNumber());
        }
    }
    return result;
}

}  // namespace avidump
