// Answers requests for a frame, synchronous or not, and checks them on the way.
#pragma once

#include "probe/HeldSuite.h"
#include "sdk/SdkImporter.h"

#include <string>
#include <vector>

namespace hostprobe {

enum class FrameResult { Delivered, NoSuchFrame, Failed };

// A look at a request's record. The list of formats is the host's and valid until the call ends; that it stays as it
// was until then is checked at the end of this object's life. It is not looked at later: the host may use it again.
class FrameRequest {
public:
    FrameRequest(std::string call, const void* record);
    ~FrameRequest();
    FrameRequest(const FrameRequest&) = delete;
    FrameRequest& operator=(const FrameRequest&) = delete;

    PrTime time() const;
    PrPixelFormat format() const;           // the first that is asked for

private:
    void checkValues() const;
    void copyFormats();

    std::string m_call;
    const void* m_record;
    std::vector<imFrameFormat> m_formats;
};

// Holds the suites that frames need; they are taken at construction and given back at destruction.
class FrameMaker {
public:
    explicit FrameMaker(SPBasicSuite* basic);

    // Fills the host's frame variable of the record; the frame is the host's from then on. On any failure the
    // variable stays as it is.
    FrameResult deliver(const std::string& call, void* record) const;

    // 0 when the host does not tell.
    PrTime ticksPerSecond() const;

private:
    FrameResult make(const FrameRequest& request, PPixHand& out) const;
    void paintFrame(PPixHand frame, PrPixelFormat format, csSDK_int64 number) const;

    HeldSuite<PrSDKPPixCreatorSuite> m_creator;
    HeldSuite<PrSDKPPixSuite> m_frames;
    HeldSuite<PrSDKTimeSuite> m_time;
};

}  // namespace hostprobe
