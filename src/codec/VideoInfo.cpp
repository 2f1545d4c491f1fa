#include "codec/VideoInfo.h"

#include "codec/DecodeFormats.h"
#include "host/Vocabulary.h"
#include "log/Log.h"
#include "text/FourCC.h"
#include "text/Numbers.h"
#include "text/Utf.h"

#include <algorithm>
#include <exception>
#include <stdexcept>

namespace {

// What a file that states no frame rate plays at.
constexpr std::int32_t kDefaultRate = 30;
constexpr std::int32_t kDefaultScale = 1;

}  // namespace

VideoInfo::VideoInfo(fileio::File& file, LazyImporterSuites& suites) : m_file(file), m_suites(suites) {
    Log("VideoInfo::VideoInfo()");
    m_suites.get().time.get()->GetTicksPerSecond(&m_ticksPerSecond);
}

VideoInfo::~VideoInfo() {
    Log("VideoInfo::~VideoInfo()");
}

csSDK_int32 VideoInfo::open(const AviStream& stream) {
    m_stream = &stream;
    m_formatData = stream.formatExtraData();
    if (m_formatData.empty()) {
        Log("Compressed format size is invalid");
        return imBadFile;
    }

    QuorvaneFormat format;
    csSDK_int32 result = queryStream(m_codec, format);
    if (result == imNoErr) {
        setFormat(format);
        Log("Compressed format info: %d x %d, %s (%d), %s (%d), range: %d", static_cast<int>(format.width),
            static_cast<int>(format.height), codecTypeName(format.type).c_str(), static_cast<int>(format.type),
            codecColorSpaceName(format.colorSpace).c_str(), static_cast<int>(format.colorSpace),
            static_cast<int>(format.range));
        result = findSubType(format.type, m_subType);
    }
    if (result == imNoErr) {
        result = findFormats();
    }
    if (result == imNoErr) {
        readFrameRate();
    }
    return result;
}

csSDK_int32 VideoInfo::queryStream(CodecInstance& codec, QuorvaneFormat& format) const {
    try {
        format = codec.decompressQuery(m_formatData);
        return imNoErr;
    } catch (const std::exception& error) {
        Log("Decompress query failed: %s", error.what());
        return imBadFile;
    }
}

csSDK_int32 VideoInfo::findSubType(std::uint32_t type, SubTypeInfo& found) {
    try {
        found = GetSubTypeInfo_by_quoTypeComp(type);
        return imNoErr;
    } catch (const std::runtime_error&) {
        Log("Unknown compressed type: %s (%s)", codecTypeName(type).c_str(), std::to_string(type).c_str());
        return imOtherErr;
    }
}

csSDK_int32 VideoInfo::findFormats() {
    CodecInstance codec;   // the stream's own instance stays free of probes
    const std::vector<FormatInfo> candidates = findDecodeFormats(codec, m_formatData);
    QuorvaneFormat format;
    if (const csSDK_int32 result = queryStream(codec, format); result != imNoErr) {
        return result;
    }
    SubTypeInfo subType;
    if (const csSDK_int32 result = findSubType(format.type, subType); result != imNoErr) {
        return result;
    }
    m_decodeFormats = preferredFormats(subType, candidates);
    Log("Decode formats:");
    for (const FormatInfo& info : m_decodeFormats) {
        Log("    %s [%s]", PixelFormatName(info.pixelFormat), FourCCToString(info.pixelFormat, false).c_str());
    }
    if (m_decodeFormats.empty()) {
        Log("No formats to decode into: decodeFormats is empty");
        return imBadFile;
    }
    return imNoErr;
}

void VideoInfo::readFrameRate() {
    m_frameCount = m_stream->chunkCount();
    m_rate = static_cast<std::int32_t>(m_stream->header().dwRate);
    m_scale = static_cast<std::int32_t>(m_stream->header().dwScale);
    if (m_rate == 0 || m_scale == 0) {
        Log("Invalid FPS: %d/%d", m_rate, m_scale);
        m_rate = kDefaultRate;
        m_scale = kDefaultScale;
    }
    m_ticksPerFrame = findTicksPerFrame();
}

VideoInfo::FrameSize VideoInfo::frameSize() const {
    const std::uint64_t size = m_frameSize.load(std::memory_order_relaxed);
    return {static_cast<csSDK_int32>(size >> 32), static_cast<csSDK_int32>(size & 0xFFFFFFFFu)};
}

void VideoInfo::setFormat(const QuorvaneFormat& format) {
    m_format = format;
    m_frameSize.store(static_cast<std::uint64_t>(format.width) << 32 | format.height, std::memory_order_relaxed);
}

csSDK_int32 VideoInfo::getIndPixelFormat(std::uint32_t index, imIndPixelFormatRec* record) const {
    if (index >= m_decodeFormats.size()) {
        return imBadFormatIndex;
    }
    const std::uint32_t pixelFormat = m_decodeFormats[index].pixelFormat;
    record->outPixelFormat = pixelFormat;
    Log("Adding pixel format: %s [%s]", PixelFormatName(pixelFormat), FourCCToString(pixelFormat, false).c_str());
    return imNoErr;
}

std::string VideoInfo::summary() const {
    const FrameSize size = frameSize();
    return "Size: " + mebibytes(m_stream->totalBytes()) + "\n" +
           "Codec: '" + FourCCToString(m_stream->header().fccHandler, false) + "', " +
           utf8FromUtf16(m_subType.subTypeName) + "\n" +
           "Frame size: " + std::to_string(size.width) + " x " + std::to_string(size.height) + "\n" +
           "Frame count: " + std::to_string(m_frameCount) + "\n" +
           "Frame rate: " + fixedPoint(static_cast<double>(m_rate) / m_scale, 3);
}

void VideoInfo::dataRateAnalysis(imDataRateAnalysisRec* record) const {
    if (record->buffer == nullptr) {
        record->buffersize = static_cast<csSDK_int32>(m_frameCount * sizeof(imDataSample));
        return;
    }
    const csSDK_int32 stated = record->buffersize;
    const std::uint64_t room = stated > 0 ? static_cast<std::uint64_t>(stated) / sizeof(imDataSample) : 0;
    const std::uint64_t count = std::min(m_frameCount, room);
    for (std::uint64_t i = 0; i < count; ++i) {
        record->buffer[i] = {static_cast<csSDK_uint32>(m_scale) | kDataSampleKeyFrame, m_stream->chunk(i).size};
    }
    record->baserate = 0;
}
