// The files that the host has opened. Private data is never reused, so that a late call is known as such.
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

// Returns a new file's private data. Opening it is like opening a quiet file.
Clip* addClip();

bool isAnyClipOpen();

// Releases what files still hold that the host forgot to close.
void dropClips();

// One synchronous call for a file. Complains of private data that is not of an open file (for an opening, of a quiet
// one), of a call before the file was described, of two calls at once, and of another file reference.
class ClipCall {
public:
    ClipCall(csSDK_int32 selector, void* privateData);
    ClipCall(csSDK_int32 selector, void* privateData, imFileRef reference);
    ~ClipCall();
    ClipCall(const ClipCall&) = delete;
    ClipCall& operator=(const ClipCall&) = delete;

    // Null if the call cannot be answered.
    Clip* clip() const { return m_clip; }

    // Complains if the reference is not the one that was stored.
    void expectReference(imFileRef reference) const;

private:
    bool isLegal(const Clip& clip) const;

    csSDK_int32 m_selector;
    Clip* m_clip = nullptr;
};

// Returns the result of `answer`, or imOtherErr if the call cannot be answered.
template <class Answer>
csSDK_int32 answerFor(const ClipCall& call, Answer answer) {
    return call.clip() ? csSDK_int32{answer(*call.clip())} : csSDK_int32{imOtherErr};
}

}  // namespace hostprobe
