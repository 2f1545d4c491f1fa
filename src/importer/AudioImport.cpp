// Audio samples for the host: the part of AudioInfo that reads and converts.
#include "importer/AudioInfo.h"

#include "importer/Deinterleave.h"
#include "log/Log.h"

#include <algorithm>
#include <cstring>

// The range of one request. If a position in bytes exceeds 64 bits, sums and products wrap.
struct AudioInfo::AudioRange {
    std::int64_t startPos = 0;        // sample frames
    std::int64_t endPos = 0;
    std::int64_t startPosBytes = 0;   // of the stream
    std::uint32_t sizeBytes = 0;      // wraps above 4 GiB
};

namespace {

// Maximum number of empty chunks that a request visits one by one. A damaged index can list hundreds of millions in a
// row, and each costs a seek and a log line.
constexpr std::size_t kMostEmptyChunks = 10'000;

std::int64_t wrappingSum(std::int64_t a, std::uint64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + b);
}

bool hasBuffers(const imImportAudioRec7& record, std::uint32_t channels) {
    for (std::uint32_t channel = 0; channel < channels; ++channel) {
        if (record.buffer == nullptr || record.buffer[channel] == nullptr) {
            return false;
        }
    }
    return true;
}

}  // namespace

csSDK_int32 AudioInfo::importAudio(const imImportAudioRec7& record) {
    if (!m_valid) {
        return imNoErr;
    }
    AudioRange range;
    range.startPos = record.position < 0 ? m_audioPosition : record.position;
    range.endPos = wrappingSum(range.startPos, record.size);
    range.startPosBytes = static_cast<std::int64_t>(std::uint64_t{m_format.nBlockAlign} *
                                                    static_cast<std::uint64_t>(range.startPos));
    range.sizeBytes = m_format.nBlockAlign * record.size;
    logRange(record, range);

    m_bytes.growTo(range.sizeBytes);
    const std::uint32_t done = readBytes(range);
    Log("fill    : %lld", static_cast<long long>(range.sizeBytes - done));
    if (done < range.sizeBytes) {
        std::memset(m_bytes.data() + done, 0, range.sizeBytes - done);
    }
    m_audioPosition = range.endPos;
    return convert(record, range);
}

void AudioInfo::logRange(const imImportAudioRec7& record, const AudioRange& range) const {
    Log("importAudioRec7P->position: %lld", static_cast<long long>(record.position));
    Log("m_audioPosition           : %lld", static_cast<long long>(m_audioPosition));
    Log("startPos                  : %lld", static_cast<long long>(range.startPos));
    Log("importAudioRec7P->size    : %u", record.size);
    Log("endPos                    : %lld", static_cast<long long>(range.endPos));
    Log("m_numAudioSampleFrames    : %lld", static_cast<long long>(m_numAudioSampleFrames));
    Log("startPosBytes             : %lld", static_cast<long long>(range.startPosBytes));
    Log("sizeBytes                 : %lld", static_cast<long long>(range.sizeBytes));
}

// Reads the range's bytes into the buffer, chunk by chunk; returns the number of bytes read.
std::uint32_t AudioInfo::readBytes(const AudioRange& range) {
    std::uint32_t done = 0;
    const auto first = m_stream->findChunkByBytePosition(range.startPosBytes);
    if (!first.has_value()) {
        return done;
    }
    const std::size_t count = m_stream->chunkCount();
    std::size_t emptyChunks = 0;
    for (std::size_t i = *first; i < count && done != range.sizeBytes;) {
        const AviChunk chunk = m_stream->chunk(i);
        if (!readFromChunk(chunk, range, done)) {
            break;
        }
        emptyChunks += chunk.size == 0;
        i = emptyChunks < kMostEmptyChunks
                ? i + 1
                : m_stream->findChunkByBytePosition(wrappingSum(range.startPosBytes, done)).value_or(count);
    }
    return done;
}

bool AudioInfo::readFromChunk(const AviChunk& chunk, const AudioRange& range, std::uint32_t& done) {
    const std::uint64_t inChunk = static_cast<std::uint64_t>(range.startPosBytes) + done - chunk.startByte;
    const std::uint64_t wanted = std::min<std::uint64_t>(range.sizeBytes - done, chunk.size - inChunk);
    const auto filePos = static_cast<std::int64_t>(chunk.offset + inChunk);
    Log("reading : %lld, %lld, %lld", static_cast<long long>(chunk.startByte + inChunk),
        static_cast<long long>(filePos), static_cast<long long>(wanted));
    if (!m_file.seek(filePos)) {
        Log("importAudio: seek error: %lld, pos: %lld", static_cast<long long>(filePos),
            static_cast<long long>(m_file.tell()));
        return false;
    }
    const std::uint64_t read = wanted != 0 ? m_file.read(m_bytes.data() + done, wanted) : 0;
    done += static_cast<std::uint32_t>(read);
    if (read != wanted) {
        Log("importAudio: read error: %lld, read: %lld", static_cast<long long>(wanted),
            static_cast<long long>(read));
        return false;
    }
    return true;
}

csSDK_int32 AudioInfo::convert(const imImportAudioRec7& record, const AudioRange& range) {
    const std::uint32_t channels = m_format.nChannels;
    const std::uint32_t size = record.size;
    if (size > 0 && !hasBuffers(record, channels)) {
        Log("importAudio: the host has no buffer for each channel");
        return imOtherErr;
    }
    if (m_sampleType == kPrAudioSampleType_32BitFloat) {
        deinterleave32(m_bytes.data(), range.sizeBytes, record.buffer, channels, size);
        return imNoErr;
    }

    // If the byte count wrapped, the suite would read past our bytes: the frames after them are silence.
    const std::uint32_t frames =
        m_format.nBlockAlign != 0 ? std::min(size, range.sizeBytes / m_format.nBlockAlign) : size;
    if (frames < size) {
        silence(record.buffer, channels, frames, size);
    }

    if (m_sampleType == kPrAudioSampleType_8BitInt) {
        makeSigned8(m_bytes.data(), range.sizeBytes);   // also the filled bytes: they become -128, not silence
    }
    const PrSDKAudioSuite* suite = m_suites.get().audio.get();
    const char* bytes = reinterpret_cast<const char*>(m_bytes.data());
    switch (m_sampleType) {
    case kPrAudioSampleType_8BitInt:
        suite->UninterleaveAndConvertFrom8BitInteger(bytes, record.buffer, channels, frames);
        break;
    case kPrAudioSampleType_16BitInt:
        suite->UninterleaveAndConvertFrom16BitInteger(reinterpret_cast<const csSDK_int16*>(bytes), record.buffer,
                                                      channels, frames);
        break;
    case kPrAudioSampleType_24BitInt:
        suite->UninterleaveAndConvertFrom24BitInteger(bytes, record.buffer, channels, frames);
        break;
    case kPrAudioSampleType_32BitInt:
        suite->UninterleaveAndConvertFrom32BitInteger(reinterpret_cast<const csSDK_int32*>(bytes), record.buffer,
                                                      channels, frames);
        break;
    default: return imDecompressionError;
    }
    return imNoErr;
}
