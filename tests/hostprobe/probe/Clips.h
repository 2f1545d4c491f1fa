// The files that the host has opened. Private data is never used a second time, so that a late call is known as such.
#pragma once

#include "probe/FrameMaker.h"

#include <atomic>
#include <optional>
#include <string>

namespace hostprobe {

struct Clip {
    enum class State { Open, Quiet, Closed };

    State state = State::Quiet;             // until it is opened
    std::u16string path;
    csSDK_int32 importerId = 0;
    csSDK_int32 streamOfOpening = 0;
    imFileRef reference = nullptr;
    std::optional<FrameMaker> frames;       // until the file is closed

    bool isDescribed = false;
    csSDK_int32 promisedStreams = 1;        // streams that the host may ask for
    csSDK_int32 stream = 0;                 // described last
    csSDK_int32 nextPixelFormat = 0;
    csSDK_int32 samplesAskedFor = 0;        // bytes
    PrAudioSample nextSound = 0;

    std::atomic<bool> isBusy = false;
};

// A new file's private data. It is opened as one is that comes back from quiet.
Clip* addClip();

bool isAnyClipOpen();

// Gives back what files still hold that the host forgot to close.
void dropClips();

// One synchronous call for a file. Complains of private data that is not of an open file (or, for an opening, of a
// quiet one), of a call before the file was described, and of two calls at once.
class ClipCall {
public:
    ClipCall(csSDK_int32 selector, void* privateData);
    ~ClipCall();
    ClipCall(const ClipCall&) = delete;
    ClipCall& operator=(const ClipCall&) = delete;

    // Null when the call cannot be answered.
    Clip* clip() const { return m_clip; }

    // Complains and gives false when the reference is not the one that was stored.
    bool expectReference(imFileRef reference) const;

private:
    bool isLegal(const Clip& clip) const;

    csSDK_int32 m_selector;
    Clip* m_clip = nullptr;
};

}  // namespace hostprobe
