// A host whose frame buffers and sound conversions cost next to nothing: for measuring and counting what the plug-in
// itself does.
//
//   Host host;
//   LightHost light(host, 1920 * 1080 * 4);       // before the plug-in acquires its suites
//
// Its PPix Creator, PPix and Audio Suites take the place of the host's own. Frame buffers lie ready and are lent round
// and round, neither filled nor guarded, and without books; sound is not converted at all. All else is the host's.
// The suites may be called on any threads.
#pragma once

#include "hostkit/host/Host.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>

namespace hostkit {

class LightHost {
public:
    // As many frames can be out at once; creating one more fails.
    static constexpr std::size_t kFrames = 64;

    // Every frame has a buffer of `frameBytes`, whose rows share it evenly. The host must outlive this object, of which
    // one exists at a time: throws std::logic_error. No plug-in may hold its suites when it ends.
    LightHost(Host& host, std::size_t frameBytes);
    ~LightHost();
    LightHost(const LightHost&) = delete;
    LightHost& operator=(const LightHost&) = delete;

    // The buffer of a frame that is out.
    const char* pixels(PPixHand frame) const;

    // Takes back a frame that the plug-in has delivered; null is none.
    static void dispose(PPixHand frame);

    std::size_t framesOut() const;

    // For the host's own parts.
    PPixHand lend(const prRect& bounds);
    char* pixelsOf(PPixHand frame);
    csSDK_int32 rowBytesOf(PPixHand frame) const;

private:
    struct Frame {
        std::atomic<bool> isOut = false;
        std::unique_ptr<char[]> pixels;     // made when first lent
        csSDK_int32 rowBytes = 0;
    };
    static Frame& frameOf(PPixHand frame) { return *reinterpret_cast<Frame*>(frame); }

    Host& m_host;
    piSuites* m_suitesBefore;
    PlugUtilFuncs m_utilities;
    piSuites m_suites;
    std::size_t m_frameBytes;
    std::array<Frame, kFrames> m_frames;
};

}  // namespace hostkit
