// Answers requests for a frame, synchronous or not, and checks them on the way.
#pragma once

#include "probe/HeldSuite.h"
#include "sdk/SdkImporter.h"

#include <string>
#include <vector>

namespace hostprobe {

enum class FrameResult { Delivered, NoSuchFrame, Failed };

// A request's record. The list of formats is the host's; the destructor checks that it did not change during the call.
// It is not read later: the host may reuse it.
class FrameRequest {
public:
    FrameRequest(std::string call, const void* record);
    ~FrameRequest();
    FrameRequest(const FrameRequest&) = delete;
    FrameRequest& operator=(const FrameRequest&) = delete;

    PrTime time() const;
    PrPixelFormat format() const;           // the first in the list

private:
    void checkValues() const;
    void copyFormats();

    std::string m_call;
    const void* m_record;
    std::vector<imFrameFormat> m_formats;
};

// Holds the suites that frames need, from construction to destruction.
class FrameMaker {
public:
    explicit FrameMaker(SPBasicSuite* basic);

    // Stores the frame in the record's variable and hands it over to the host. On any failure the variable does not
    // change.
    FrameResult deliver(const std::string& call, void* record) const;

    // Returns 0 if the Time Suite fails.
    PrTime ticksPerSecond() const;

private:
    FrameResult make(const FrameRequest& request, PPixHand& out) const;
    void paintFrame(PPixHand frame, PrPixelFormat format, csSDK_int64 number) const;

    HeldSuite<PrSDKPPixCreatorSuite> m_creator;
    HeldSuite<PrSDKPPixSuite> m_frames;
    HeldSuite<PrSDKTimeSuite> m_time;
};

}  // namespace hostprobe
