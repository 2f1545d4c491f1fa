// What a wrong plug-in needs to be wrong about pictures: the request in words, and the pixels of a frame.
#pragma once

#include "wrong/Fault.h"

#include <utility>
#include <vector>

namespace wrong {

// A call of the entry, whatever its selector. Remembers how the latest clip was described, to tell times.
class Request {
public:
    Request(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2)
        : m_selector(selector), m_stdParms(stdParms), m_param1(param1), m_param2(param2) {}

    bool isFrame() const { return m_selector == imGetSourceVideo; }

    // The right plug-in's answer; of a frame also at another frame's start, or in other formats.
    csSDK_int32 pass() const;
    csSDK_int32 passAt(PrTime index) const;
    csSDK_int32 passIn(std::vector<imFrameFormat> formats) const;

    // The following are for frames.
    PrTime time() const { return record().inFrameTime; }
    PrTime index() const { return time() / ticksPerFrame(); }
    PrTime lastIndex() const;
    PrTime ticksPerFrame() const;
    PrTime rate() const;
    PrTime scale() const;
    int formatCount() const { return record().inNumFrameFormats; }
    imFrameFormat format(int number) const { return record().inFrameFormats[number]; }
    void* privateData() const { return record().inPrivateData; }
    void setPrivateData(void* data) const { record().inPrivateData = data; }
    PPixHand& frame() const { return *record().outFrame; }

private:
    imSourceVideoRec& record() const { return *static_cast<imSourceVideoRec*>(m_param2); }

    csSDK_int32 m_selector;
    imStdParms* m_stdParms;
    void* m_param1;
    void* m_param2;
};

// A frame's pixels; null for a frame that the host does not have.
struct Pixels {
    char* bytes = nullptr;
    int rowBytes = 0;
    int width = 0;
    int height = 0;
    PrPixelFormat format = PrPixelFormat_Invalid;
};
Pixels pixelsOf(imStdParms* stdParms, PPixHand frame);
PPixHand newFrame(imStdParms* stdParms, const Pixels& shape);
void disposeFrame(imStdParms* stdParms, PPixHand frame);

}  // namespace wrong
