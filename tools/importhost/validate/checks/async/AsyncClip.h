// A clip with an asynchronous importer, and the frames drawn at once that its frames must equal. What checks of the
// asynchronous protocol have in common.
#pragma once

#include "hostkit/sessions/AsyncSession.h"
#include "importhost/validate/checks/stage/OpenClip.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace importhost::validate {

// A frame of a clip in one of the offered formats.
struct FrameKey {
    std::int64_t index = 0;
    PrPixelFormat format = PrPixelFormat_Invalid;

    friend bool operator==(const FrameKey&, const FrameKey&) = default;
    friend auto operator<=>(const FrameKey&, const FrameKey&) = default;
};
std::string textOf(const FrameKey& frame);          // "frame 12 as bgra"

// A frame drawn at once: whether it could be, and a digest of what it shows; a user's frames may be too big to keep.
struct DrawnFrame {
    csSDK_int32 result = 0;
    std::uint64_t pixels = 0;
};

// Announces and collects, and holds every answer against the frame that the clip's own importer draws. Frames must be
// drawn before several threads announce or collect.
class AsyncClip {
public:
    // Creates the importer. The check fails when there is none.
    AsyncClip(CheckRun& run, PlayedPlugin& plugin, OpenClip& clip);
    ~AsyncClip();
    AsyncClip(const AsyncClip&) = delete;
    AsyncClip& operator=(const AsyncClip&) = delete;

    bool isOpen() const { return m_session.isOpen(); }
    OpenClip& clip() { return m_clip; }
    hostkit::AsyncSession& session() { return m_session; }

    // Up to `most` of the clip's frames: the first, the last, and others chosen by lot, in ascending order. In the
    // clip's first format, or in this one.
    std::vector<FrameKey> drawSome(int most) { return drawSome(most, m_clip.formats().front()); }
    std::vector<FrameKey> drawSome(int most, PrPixelFormat format);

    // So many frames, or fewer, as may wait at once without filling up the memory.
    int atOnce(int wanted) const;

    void announce(const FrameKey& frame);
    void collect(const FrameKey& frame);
    void expectAnswer(const std::string& call, csSDK_int32 found, csSDK_int32 wanted);
    void flush() { expectAnswer("flushing", m_session.flush(), aiNoError); }
    void close() { expectAnswer("closing", m_session.close(), aiNoError); }

    PrTime timeOf(const FrameKey& frame) const { return m_clip.timeOf(frame.index); }
    std::vector<imFrameFormat> formatOf(const FrameKey& frame) const { return {m_clip.wanted(frame.format)}; }

private:
    std::set<std::int64_t> choose(int most);

    CheckRun& m_run;
    OpenClip& m_clip;
    hostkit::AsyncSession m_session;
    std::map<FrameKey, DrawnFrame> m_drawn;
};

// Does `look` with each clip that has pictures, with an asynchronous importer for it. Clips that promise none are left
// out; when no clip serves the check is skipped.
void forEachAsyncClip(CheckRun& run, PlayedPlugin& plugin, const std::function<void(AsyncClip&)>& look);

// The same with a few of them, more at higher levels: for demands that hardly depend on what is in a clip.
void forSomeAsyncClips(CheckRun& run, PlayedPlugin& plugin, const std::function<void(AsyncClip&)>& look);

// The same with the first such clip alone.
void withAsyncClip(CheckRun& run, PlayedPlugin& plugin, const std::function<void(AsyncClip&)>& look);

// Holds the plug-in's threads in a function of the host, from the next call on, until it is released or gone. A hold
// that nobody releases ends after a few seconds: a plug-in that waits for itself is to fail and not to hang.
class HeldCall {
public:
    HeldCall(hostkit::Host& host, hostkit::HostCall call);
    ~HeldCall();
    HeldCall(const HeldCall&) = delete;
    HeldCall& operator=(const HeldCall&) = delete;

    bool waitForArrival();          // false when no thread came in time
    void release();
    bool hasTimedOut() const;       // it was let go because nobody released it

private:
    struct State;
    hostkit::Host& m_host;
    std::shared_ptr<State> m_state;
};

}  // namespace importhost::validate
