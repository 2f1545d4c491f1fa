// What a wrong plug-in needs to be wrong about pictures: the request in words, and the pixels of a frame.
#pragma once

#include "wrong/Fault.h"

#include <vector>

namespace wrong {

// A request for a frame. Times are those of the clip that was described last.
struct FrameRequest : Call {
    // The real plug-in's result for another frame's start, or in other formats.
    csSDK_int32 passAt(PrTime index) const;
    csSDK_int32 passIn(std::vector<imFrameFormat> formats) const;

    imSourceVideoRec& video() const { return record<imSourceVideoRec>(); }
    PrTime time() const { return video().inFrameTime; }
    PrTime index() const { return time() / ticksPerFrame(); }
    PrTime lastIndex() const;
    PrTime ticksPerFrame() const;
    PrTime exactIndex() const;      // without rounding a frame's duration to ticks first
    int formatCount() const { return video().inNumFrameFormats; }
    imFrameFormat format(int number) const { return video().inFrameFormats[number]; }
    PPixHand& frame() const { return *video().outFrame; }
};

// Passes all calls but requests for frames to the real plug-in.
Answer frames(std::function<csSDK_int32(const FrameRequest& request)> answer);

// A frame's pixels; null for a frame that the host does not have.
struct Pixels {
    char* bytes = nullptr;
    int rowBytes = 0;
    int width = 0;
    int height = 0;
    PrPixelFormat format = PrPixelFormat_Invalid;
};
Pixels pixelsOf(const imStdParms* stdParms, PPixHand frame);
PPixHand newFrame(const imStdParms* stdParms, const Pixels& shape);
void disposeFrame(const imStdParms* stdParms, PPixHand frame);

// Delivers a new frame without any picture where the real plug-in returns `answer`.
Answer deliversInsteadOf(csSDK_int32 answer);
csSDK_int32 deliverNothing(const FrameRequest& request);

}  // namespace wrong
