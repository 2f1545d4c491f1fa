#include "wrong/FrameTools.h"

#include <limits>

namespace wrong {

namespace {

constexpr PrTime kTicksPerSecond = 254016000000;
constexpr csSDK_int32 kUsualWidth = 48;
constexpr csSDK_int32 kUsualHeight = 32;

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

HeldSuite<PrSDKPPixSuite> frameSuite(const imStdParms* stdParms) {
    return {stdParms, kPrSDKPPixSuite, kPrSDKPPixSuiteVersion};
}

}  // namespace

csSDK_int32 FrameRequest::passAt(PrTime index) const {
    const PrTime asked = time();
    video().inFrameTime = index * ticksPerFrame();
    const csSDK_int32 result = pass();
    video().inFrameTime = asked;
    return result;
}

csSDK_int32 FrameRequest::passIn(std::vector<imFrameFormat> formats) const {
    imFrameFormat* const asked = video().inFrameFormats;
    const csSDK_int32 count = video().inNumFrameFormats;
    video().inFrameFormats = formats.data();
    video().inNumFrameFormats = static_cast<csSDK_int32>(formats.size());
    const csSDK_int32 result = pass();
    video().inFrameFormats = asked;
    video().inNumFrameFormats = count;
    return result;
}

PrTime FrameRequest::lastIndex() const { return describedFrames - 1; }

PrTime FrameRequest::ticksPerFrame() const { return describedScale * kTicksPerSecond / describedRate; }

PrTime FrameRequest::exactIndex() const {
    return static_cast<PrTime>(static_cast<long double>(time()) * static_cast<long double>(describedRate) /
                               (static_cast<long double>(describedScale) * kTicksPerSecond));
}

Answer frames(std::function<csSDK_int32(const FrameRequest& request)> answer) {
    return [=](const Call& call) {
        if (call.selector == imGetSourceVideo) {
            return answer(FrameRequest{call});
        }
        const csSDK_int32 result = call.pass();
        if (call.selector == imGetInfo8) {
            remember(call.record<imFileInfoRec8>());
        }
        return result;
    };
}

Pixels pixelsOf(const imStdParms* stdParms, PPixHand frame) {
    const auto suite = frameSuite(stdParms);
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

PPixHand newFrame(const imStdParms* stdParms, const Pixels& shape) {
    const HeldSuite<PrSDKPPixCreatorSuite> suite(stdParms, kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion);
    const prRect bounds = {0, 0, shape.width, shape.height};
    PPixHand frame = nullptr;
    if (suite) {
        suite->CreatePPix(&frame, PrPPixBufferAccess_WriteOnly, shape.format, &bounds);
    }
    return frame;
}

void disposeFrame(const imStdParms* stdParms, PPixHand frame) { frameSuite(stdParms)->Dispose(frame); }

Answer deliversInsteadOf(csSDK_int32 answer) {
    return frames([=](const FrameRequest& request) {
        const csSDK_int32 result = request.pass();
        return result == answer ? deliverNothing(request) : result;
    });
}

csSDK_int32 deliverNothing(const FrameRequest& request) {
    const imFrameFormat wanted = request.format(0);
    request.frame() = newFrame(request.stdParms, {.width = wanted.inFrameWidth ? wanted.inFrameWidth : kUsualWidth,
                                                  .height = wanted.inFrameHeight ? wanted.inFrameHeight : kUsualHeight,
                                                  .format = static_cast<PrPixelFormat>(wanted.inPixelFormat)});
    return request.frame() ? csSDK_int32{imNoErr} : csSDK_int32{imOtherErr};
}

}  // namespace wrong
