#include "probe/FrameMaker.h"

#include "probe/Complaints.h"
#include "probe/Fields.h"
#include "probe/InventedClip.h"
#include "probe/SuiteChecks.h"

namespace hostprobe {

namespace {

constexpr csSDK_int32 kHighestQuality = 4;
constexpr std::uintptr_t kRowAlignment = 16;

}  // namespace

FrameRequest::FrameRequest(std::string call, const void* record) : m_call(std::move(call)), m_record(record) {
    checkValues();
    copyFormats();
}

FrameRequest::~FrameRequest() {
    const void* list = pointerAt(m_record, kVideoFormats);
    const std::size_t bytes = m_formats.size() * sizeof(imFrameFormat);
    expect(bytes == 0 || (list && std::memcmp(list, m_formats.data(), bytes) == 0), Sentence::FormatsChanged, {m_call});
}

void FrameRequest::checkValues() const {
    const csSDK_int32 quality = int32At(m_record, kVideoQuality);
    const auto removePulldown = fieldAt<unsigned char>(m_record, kVideoRemovePulldown);
    expect(quality >= 0 && quality <= kHighestQuality, Sentence::BadValue, {m_call, "inQuality"});
    expect(removePulldown <= 1, Sentence::BadValue, {m_call, "removePulldown"});
    expect(int32At(m_record, kVideoStream) >= 0, Sentence::BadValue, {m_call, "currentStreamIdx"});
}

void FrameRequest::copyFormats() {
    const void* list = pointerAt(m_record, kVideoFormats);
    const csSDK_int32 count = int32At(m_record, kVideoFormatCount);
    if (!expect(count == 0 || (list && count > 0), Sentence::FormatCount, {m_call})) {
        return;
    }
    m_formats.resize(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < m_formats.size(); ++i) {
        m_formats[i] = fieldAt<imFrameFormat>(list, i * sizeof(imFrameFormat));
        expect(m_formats[i].inFrameWidth >= 0 && m_formats[i].inFrameHeight >= 0, Sentence::BadValue,
               {m_call, "a wanted frame's size"});
    }
}

PrTime FrameRequest::time() const { return fieldAt<PrTime>(m_record, kVideoTime); }

PrPixelFormat FrameRequest::format() const {
    const csSDK_uint32 wanted = m_formats.empty() ? 0 : m_formats.front().inPixelFormat;
    return wanted == PrPixelFormat_Any ? kOffered[0] : static_cast<PrPixelFormat>(wanted);
}

FrameMaker::FrameMaker(SPBasicSuite* basic)
    : m_creator(basic, kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion),
      m_frames(basic, kPrSDKPPixSuite, kPrSDKPPixSuiteVersion),
      m_time(basic, kPrSDKTimeSuite, kPrSDKTimeSuiteVersion) {}

PrTime FrameMaker::ticksPerSecond() const { return m_time.usable() ? askTicksPerSecond(*m_time.get()) : 0; }

FrameResult FrameMaker::deliver(const std::string& call, void* record) const {
    auto* outFrame = static_cast<PPixHand*>(pointerAt(record, kVideoOutFrame));
    const FrameRequest request(call, record);
    if (!expect(outFrame, Sentence::OutFrameMissing, {call})) {
        return FrameResult::Failed;
    }
    PPixHand frame = nullptr;
    const FrameResult result = make(request, frame);
    if (result == FrameResult::Delivered) {
        *outFrame = frame;
    }
    return result;
}

FrameResult FrameMaker::make(const FrameRequest& request, PPixHand& out) const {
    const PrTime ticks = ticksPerSecond();
    if (ticks == 0 || !m_creator.usable()) {
        return FrameResult::Failed;
    }
    const PrTime number = request.time() / (ticks / kFramesPerSecond);
    if (request.time() < 0 || number >= kFrameCount) {
        return FrameResult::NoSuchFrame;
    }
    prRect bounds;
    bounds.right = kWidth;
    bounds.bottom = kHeight;
    const PrPixelFormat format = request.format();
    const prSuiteError error = m_creator.get()->CreatePPix(&out, PrPPixBufferAccess_WriteOnly, format, &bounds);
    if (error < 0 || !out) {
        return FrameResult::Failed;
    }
    paintFrame(out, format, number);
    return FrameResult::Delivered;
}

// Without the suite that leads to its pixels a frame stays as the host made it.
void FrameMaker::paintFrame(PPixHand frame, PrPixelFormat format, csSDK_int64 number) const {
    char* pixels = nullptr;
    csSDK_int32 rowBytes = 0;
    if (!m_frames.usable() || m_frames.get()->GetRowBytes(frame, &rowBytes) < 0 || rowBytes < 4 * kWidth / 2 ||
        m_frames.get()->GetPixels(frame, PrPPixBufferAccess_WriteOnly, &pixels) < 0 || !pixels) {
        return;
    }
    const bool isWide = format != PrPixelFormat_BGRA_4444_8u || rowBytes >= 4 * kWidth;
    if (isWide && reinterpret_cast<std::uintptr_t>(pixels) % kRowAlignment == 0) {
        paint(pixels, rowBytes, kHeight, format, number);
    }
}

}  // namespace hostprobe
