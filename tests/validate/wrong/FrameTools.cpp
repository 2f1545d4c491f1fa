#include "wrong/FrameTools.h"

#include <limits>

namespace wrong {

namespace {

constexpr PrTime kTicksPerSecond = 254016000000;

// Of the clip that was described last.
PrTime describedRate = 25;
PrTime describedScale = 1;
PrTime describedFrames = 0;

void remember(const imFileInfoRec8& info) {
    const bool isCountable =
        info.vidSampleSize > 0 && info.vidSampleSize <= std::numeric_limits<PrTime>::max() / kTicksPerSecond;
    if (info.hasVideo && info.vidScale > 0 && isCountable) {
        describedRate = info.vidScale;
        describedScale = info.vidSampleSize;
        describedFrames = info.vidDuration / info.vidSampleSize;
    }
}

// A suite for as long as this lives.
template <class Suite>
class Borrowed {
public:
    Borrowed(imStdParms* stdParms, const char* name, csSDK_int32 version)
        : m_basic(stdParms->piSuites->utilFuncs->getSPBasicSuite()), m_name(name), m_version(version) {
        m_basic->AcquireSuite(name, version, &m_suite);
    }
    ~Borrowed() { m_basic->ReleaseSuite(m_name, m_version); }
    Borrowed(const Borrowed&) = delete;
    Borrowed& operator=(const Borrowed&) = delete;
    const Suite* operator->() const { return static_cast<const Suite*>(m_suite); }

private:
    SPBasicSuite* m_basic;
    const char* m_name;
    csSDK_int32 m_version;
    const void* m_suite = nullptr;
};

struct FrameSuite : Borrowed<PrSDKPPixSuite> {
    explicit FrameSuite(imStdParms* stdParms) : Borrowed(stdParms, kPrSDKPPixSuite, kPrSDKPPixSuiteVersion) {}
};

}  // namespace

csSDK_int32 Request::pass() const {
    const csSDK_int32 result = right(m_selector, m_stdParms, m_param1, m_param2);
    if (m_selector == imGetInfo8) {
        remember(*static_cast<const imFileInfoRec8*>(m_param2));
    }
    return result;
}

csSDK_int32 Request::passAt(PrTime index) const {
    const PrTime asked = record().inFrameTime;
    record().inFrameTime = index * ticksPerFrame();
    const csSDK_int32 result = pass();
    record().inFrameTime = asked;
    return result;
}

csSDK_int32 Request::passIn(std::vector<imFrameFormat> formats) const {
    imFrameFormat* const asked = record().inFrameFormats;
    const csSDK_int32 count = record().inNumFrameFormats;
    record().inFrameFormats = formats.data();
    record().inNumFrameFormats = static_cast<csSDK_int32>(formats.size());
    const csSDK_int32 result = pass();
    record().inFrameFormats = asked;
    record().inNumFrameFormats = count;
    return result;
}

PrTime Request::rate() const { return describedRate; }
PrTime Request::scale() const { return describedScale; }
PrTime Request::lastIndex() const { return describedFrames - 1; }
PrTime Request::ticksPerFrame() const { return describedScale * kTicksPerSecond / describedRate; }

Pixels pixelsOf(imStdParms* stdParms, PPixHand frame) {
    const FrameSuite suite(stdParms);
    Pixels pixels;
    prRect bounds{};
    csSDK_int32 rowBytes = 0;
    if (suite->GetPixels(frame, PrPPixBufferAccess_WriteOnly, &pixels.bytes) < 0) {
        return {};
    }
    suite->GetBounds(frame, &bounds);
    suite->GetRowBytes(frame, &rowBytes);
    suite->GetPixelFormat(frame, &pixels.format);
    pixels.rowBytes = rowBytes;
    pixels.width = bounds.right - bounds.left;
    pixels.height = bounds.bottom - bounds.top;
    return pixels;
}

PPixHand newFrame(imStdParms* stdParms, const Pixels& shape) {
    const Borrowed<PrSDKPPixCreatorSuite> suite(stdParms, kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion);
    const prRect bounds = {0, 0, shape.width, shape.height};
    PPixHand frame = nullptr;
    suite->CreatePPix(&frame, PrPPixBufferAccess_WriteOnly, shape.format, &bounds);
    return frame;
}

void disposeFrame(imStdParms* stdParms, PPixHand frame) { FrameSuite(stdParms)->Dispose(frame); }

}  // namespace wrong
