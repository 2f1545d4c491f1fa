#include "hostkit/sessions/ClipSession.h"

#include "hostkit/system/Text.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace hostkit {

namespace {

constexpr std::uint8_t kUndelivered = 0xCD;

// Importers that never say "no more" must not hold the host for ever.
constexpr std::size_t kMostStreams = 256;
constexpr std::size_t kMostPixelFormats = 1000;

// The biggest list of samples that the host would make room for.
constexpr csSDK_int32 kMostDataRateBytes = 1 << 28;

}  // namespace

HostFrame& HostFrame::operator=(HostFrame&& other) noexcept {
    if (this != &other) {
        dispose();
        m_handle = std::exchange(other.m_handle, nullptr);
    }
    return *this;
}

std::optional<FrameView> HostFrame::view() const { return Host::current().frames().view(m_handle); }

void HostFrame::dispose() {
    if (m_handle) {
        Host::current().frames().dispose(std::exchange(m_handle, nullptr));
    }
}

float undeliveredSample() {
    float sample = 0.0f;
    std::memset(&sample, kUndelivered, sizeof(sample));
    return sample;
}

ClipSession::ClipSession(ImporterSession& session, const std::filesystem::path& path, ClipOptions options)
    : m_session(session), m_path(path.u16string()), m_options(options) {}

ClipSession::~ClipSession() { close(); }

// --- Opening and closing ----------------------------------------------------------------------------------------

void ClipSession::fillAccess(imFileAccessRec8& record) const {
    record.filepath = m_path.c_str();
    record.fileref = m_fileRef;
    record.filetype = m_fileType;
}

Answer<imFileOpenRec8> ClipSession::open() {
    HostRecord<imFileOpenRec8> record;
    fillAccess(record->fileinfo);
    record->privatedata = m_privateData;
    record->inReadWrite = static_cast<PrFileOpenAccess>(m_options.access);
    record->inImporterID = m_options.importerId;
    record->inStreamIdx = m_options.streamIndex;
    Answer<imFileOpenRec8> answer = m_session.exchange(imOpenFile8, std::move(record), &m_fileRef);
    m_privateData = answer->privatedata;
    m_fileType = answer->fileinfo.filetype;
    return answer;
}

csSDK_int32 ClipSession::quiet() { return m_session.call(imQuietFile, &m_fileRef, m_privateData); }

csSDK_int32 ClipSession::close() {
    if (!m_privateData) {
        return imNoErr;
    }
    return m_session.call(imCloseFile, &m_fileRef, std::exchange(m_privateData, nullptr));
}

// --- Description ------------------------------------------------------------------------------------------------

Answer<imFileInfoRec8> ClipSession::info(csSDK_int32 streamIndex) {
    HostRecord<imFileAccessRec8> access;
    fillAccess(*access);
    HostRecord<imFileInfoRec8> record(m_session.host().profile().recordSizes().fileInfo);
    record->privatedata = m_privateData;
    record->streamIdx = streamIndex;
    record->vidInfo.importerID = m_options.importerId;
    return m_session.exchange(imGetInfo8, std::move(record), access.data());
}

std::vector<Answer<imFileInfoRec8>> ClipSession::infos() {
    std::vector<Answer<imFileInfoRec8>> answers;
    do {
        answers.push_back(info(static_cast<csSDK_int32>(answers.size())));
    } while (answers.back().result == imIterateStreams && answers.size() < kMostStreams);
    return answers;
}

Answer<imIndPixelFormatRec> ClipSession::pixelFormat(csSDK_int32 index) {
    HostRecord<imIndPixelFormatRec> record;
    record->privatedata = m_privateData;
    return m_session.exchange(imGetIndPixelFormat, std::move(record), asPointer(index));
}

std::vector<PrPixelFormat> ClipSession::pixelFormats() {
    std::vector<PrPixelFormat> formats;
    while (formats.size() < kMostPixelFormats) {
        const Answer<imIndPixelFormatRec> answer = pixelFormat(static_cast<csSDK_int32>(formats.size()));
        if (answer.result != imNoErr) {
            break;
        }
        formats.push_back(static_cast<PrPixelFormat>(answer->outPixelFormat));
    }
    return formats;
}

LayoutAnswer ClipSession::channelLayout(csSDK_int32 filled) {
    HostRecord<imGetAudioChannelLayoutRec> record;
    record->inPrivateData = m_privateData;
    std::fill_n(record->outChannelLabels, kMaxAudioChannelCount, filled);
    const auto answer = m_session.exchange(imGetAudioChannelLayout, std::move(record), m_fileRef);
    return {answer.result, {answer->outChannelLabels, answer->outChannelLabels + kMaxAudioChannelCount}};
}

AnalysisAnswer ClipSession::analysis(csSDK_int32 bufferBytes) {
    const auto size = static_cast<std::size_t>(std::max(bufferBytes, 0));
    GuardedBlock buffer(size, kUndelivered);
    HostRecord<imAnalysisRec> record;
    record->privatedata = m_privateData;
    record->buffersize = bufferBytes;
    record->buffer = reinterpret_cast<char*>(buffer.data());
    AnalysisAnswer answer;
    answer.result = m_session.exchange(imAnalysis, std::move(record), m_fileRef).result;
    answer.buffer.assign(buffer.data(), buffer.data() + size);
    answer.text = fieldText(answer.buffer.data(), size);
    if (!buffer.guardsAreIntact()) {
        m_session.host().report("The analysis text was written past its buffer of " + std::to_string(size) +
                                " bytes.");
    }
    return answer;
}

DataRateAnswer ClipSession::dataRate() {
    HostRecord<imDataRateAnalysisRec> sizeRecord;
    sizeRecord->privatedata = m_privateData;
    DataRateAnswer answer{m_session.exchange(imDataRateAnalysis, std::move(sizeRecord), m_fileRef), {}, {}};
    const csSDK_int32 bytes = answer.sizeCall->buffersize;
    if (answer.sizeCall.result != imNoErr || bytes <= 0 || bytes > kMostDataRateBytes) {
        return answer;
    }
    GuardedBlock buffer(static_cast<std::size_t>(bytes), kUndelivered);
    HostRecord<imDataRateAnalysisRec> record;
    record->privatedata = m_privateData;
    record->buffersize = bytes;
    record->buffer = reinterpret_cast<imDataSample*>(buffer.data());
    answer.dataCall = m_session.exchange(imDataRateAnalysis, std::move(record), m_fileRef);
    answer.samples.resize(buffer.size() / sizeof(imDataSample));
    if (!answer.samples.empty()) {
        std::memcpy(answer.samples.data(), buffer.data(), answer.samples.size() * sizeof(imDataSample));
    }
    if (!buffer.guardsAreIntact()) {
        m_session.host().report("The data rate samples were written past their buffer of " + std::to_string(bytes) +
                                " bytes.");
    }
    return answer;
}

// --- Frames and sound -------------------------------------------------------------------------------------------

HostRecord<imSourceVideoRec> ClipSession::frameRecord(PrTime time, std::vector<imFrameFormat>& formats,
                                                      PPixHand* outFrame, csSDK_int32 streamIndex) const {
    HostRecord<imSourceVideoRec> record(m_session.host().profile().recordSizes().sourceVideo);
    record->inPrivateData = m_privateData;
    record->currentStreamIdx = streamIndex;
    record->inFrameTime = time;
    record->inFrameFormats = formats.empty() ? nullptr : formats.data();
    record->inNumFrameFormats = static_cast<csSDK_int32>(formats.size());
    record->outFrame = outFrame;
    return record;
}

FrameAnswer ClipSession::frame(PrTime time, const std::vector<imFrameFormat>& formats, csSDK_int32 streamIndex) {
    std::vector<imFrameFormat> accepted = formats;
    PPixHand delivered = nullptr;
    auto answer = m_session.exchange(imGetSourceVideo, frameRecord(time, accepted, &delivered, streamIndex), m_fileRef);
    Host& host = m_session.host();
    if (answer.result == imNoErr && !host.frames().view(delivered)) {
        host.report("A frame request succeeded without a frame of the host's.");
        return {answer.result, {}};
    }
    if (answer.result != imNoErr && delivered) {
        host.report("A frame request failed and gave a frame all the same.");
    }
    return {answer.result, HostFrame(delivered)};
}

AudioAnswer ClipSession::audio(PrAudioSample position, csSDK_uint32 frames, csSDK_int32 channels) {
    std::vector<GuardedBlock> blocks;
    std::vector<float*> pointers;
    blocks.reserve(static_cast<std::size_t>(channels));
    for (csSDK_int32 channel = 0; channel < channels; ++channel) {
        blocks.emplace_back(std::size_t{frames} * sizeof(float), kUndelivered);
        pointers.push_back(reinterpret_cast<float*>(blocks.back().data()));
    }
    HostRecord<imImportAudioRec7> record;
    record->position = position;
    record->size = frames;
    record->buffer = pointers.data();
    record->privateData = m_privateData;
    AudioAnswer answer;
    answer.result = m_session.exchange(imImportAudio7, std::move(record), m_fileRef).result;
    for (const GuardedBlock& block : blocks) {
        const auto* samples = reinterpret_cast<const float*>(block.data());
        answer.channels.emplace_back(samples, samples + frames);
        if (!block.guardsAreIntact()) {
            m_session.host().report("A channel buffer of " + std::to_string(frames) + " samples was overrun.");
        }
    }
    return answer;
}

// --- Times ------------------------------------------------------------------------------------------------------

bool isDescribed(csSDK_int32 result) {
    return result == imNoErr || result == imIterateStreams || result == imBadStreamIndex;
}

PrTime timeOfFrame(const imFileInfoRec8& info, csSDK_int64 frameIndex, PrTime ticksPerSecond) {
    if (info.vidScale <= 0 || info.vidSampleSize <= 0) {
        return 0;
    }
    // Seconds and the rest of a second apart, and the ticks likewise: each product stays within 64 bits.
    const csSDK_int64 scale = info.vidScale;
    const csSDK_int64 units = frameIndex * info.vidSampleSize;
    const csSDK_int64 rest = units % scale;
    if (units / scale >= std::numeric_limits<PrTime>::max() / ticksPerSecond) {
        return std::numeric_limits<PrTime>::max();
    }
    return units / scale * ticksPerSecond + ticksPerSecond / scale * rest + ticksPerSecond % scale * rest / scale;
}

csSDK_int64 frameCount(const imFileInfoRec8& info) {
    return info.vidSampleSize > 0 && info.vidScale > 0 ? info.vidDuration / info.vidSampleSize : 0;
}

}  // namespace hostkit
