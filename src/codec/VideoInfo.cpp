#include "codec/VideoInfo.h"

#include "codec/DecodeFormats.h"
#include "codec/FrameRead.h"
#include "host/Vocabulary.h"
#include "log/Log.h"
#include "text/FourCC.h"
#include "text/Numbers.h"
#include "text/Utf.h"

#include <algorithm>

namespace {

// Default for a file that states no frame rate.
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
    const std::vector<std::uint8_t> compressedFormat = stream.formatExtraData();
    csSDK_int32 result = m_session.open(compressedFormat);
    if (result == imNoErr) {
        result = findSubType(m_session.format().type, m_subType);
    }
    if (result == imNoErr) {
        result = findDecodeFormats(compressedFormat, m_decodeFormats);
    }
    if (result == imNoErr) {
        readFrameRate();
    }
    return result;
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
    m_ticksPerFrame = ticksPerFrame(m_rate, m_scale, m_ticksPerSecond);
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

csSDK_int32 VideoInfo::LocateFrame(FrameRequest& request) const {
    const std::uint32_t frameIndex = frameIndexAt(request.frameTime);
    Log("inFrameTime: %lld", static_cast<long long>(request.frameTime));
    Log("frameIndex:  %u (total: %u)", frameIndex, static_cast<unsigned>(m_frameCount));
    if (frameIndex >= m_frameCount) {
        Log("frameIndex out of bounds");
        return imFrameNotFound;
    }
    request.frameIndex = frameIndex;

    const std::vector<imFrameFormat>& formats = request.frameFormats();
    Log("inNumFrameFormats: %d", static_cast<int>(formats.size()));
    for (std::size_t i = 0; LogEnabled() && i < formats.size(); ++i) {
        Log("inFrameFormats[%d]: %d %d %s [%s]", static_cast<int>(i), formats[i].inFrameWidth,
            formats[i].inFrameHeight, PixelFormatName(formats[i].inPixelFormat),
            FourCCToString(formats[i].inPixelFormat, false).c_str());
    }
    if (formats.empty()) {
        Log("ERROR: frameFormats is empty");
        return imOtherErr;
    }

    // The first format decides: the host was only offered formats that can be decoded.
    imFrameFormat& format = request.frameFormats().front();
    const FrameSize video = frameSize();
    if (format.inFrameWidth == 0) {
        format.inFrameWidth = video.width;
    }
    if (format.inFrameHeight == 0) {
        format.inFrameHeight = video.height;
    }
    if (format.inFrameWidth != video.width || format.inFrameHeight != video.height) {
        Log("ERROR: frame size mismatch (%d, %d) != (%d, %d)", format.inFrameWidth, format.inFrameHeight, video.width,
            video.height);
        return imOtherErr;
    }
    return imNoErr;
}

csSDK_int32 VideoInfo::ReadFrame(FrameRequest& request) {
    return readFrame(m_file, *m_stream, frameSize(), request);
}

csSDK_int32 VideoInfo::DecodeFrame(FrameRequest& request) {
    csSDK_int32 result = m_session.begin(request);
    if (result == imNoErr) {
        result = request.createPPix(*m_suites.get().ppixCreator.get());
    }
    if (result == imNoErr) {
        result = m_session.decode(request);
    }
    return result;
}
