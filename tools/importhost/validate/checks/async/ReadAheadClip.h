// A clip with an asynchronous importer, and the frames drawn at once that its frames must equal. What checks of the
// asynchronous protocol have in common.
#pragma once

#include "importhost/validate/checks/stage/OpenClip.h"
#include "importhost/validate/checks/stage/Outcome.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace importhost::validate {

// A frame of a clip in one of the offered formats.
struct FrameKey {
    std::int64_t index = 0;
    PrPixelFormat format = PrPixelFormat_Invalid;

    friend bool operator==(const FrameKey&, const FrameKey&) = default;
    friend auto operator<=>(const FrameKey&, const FrameKey&) = default;
};
using FrameKeys = std::vector<FrameKey>;
std::string textOf(const FrameKey& frame);          // "frame 12 as bgra"

// Announces and collects, and compares every answer with the frame that the clip's own importer draws. Frames must be
// drawn before several threads announce or collect.
class ReadAheadClip {
public:
    // Creates the importer. The check fails if there is none.
    explicit ReadAheadClip(OpenClip& clip);
    ~ReadAheadClip();
    ReadAheadClip(const ReadAheadClip&) = delete;
    ReadAheadClip& operator=(const ReadAheadClip&) = delete;

    bool isOpen() const { return m_session.isOpen(); }
    OpenClip& clip() { return m_clip; }
    hostkit::Host& host() { return m_clip.plugin().host(); }
    hostkit::AsyncSession& session() { return m_session; }

    // Up to `most` of the clip's frames: the first, the last, and random others, in ascending order. In the clip's
    // first format, or in `format`.
    FrameKeys drawSome(int most) { return drawSome(most, m_clip.formats().front()); }
    FrameKeys drawSome(int most, PrPixelFormat format);

    // `wanted`, or fewer frames if more would fill up the memory while they wait.
    int atOnce(int wanted) const;

    void announce(const FrameKey& frame);
    void announce(const FrameKeys& frames);
    void collect(const FrameKey& frame);
    void collect(const FrameKeys& frames);
    void flush() { m_run.expectAsyncResult("flushing", m_session.flush()); }
    void close() { m_run.expectAsyncResult("closing", m_session.close()); }

    // The plug-in holds no frame buffer.
    void expectNoFramesHeld(const std::string& when);

    PrTime timeOf(const FrameKey& frame) const { return m_clip.timeOf(frame.index); }
    std::vector<imFrameFormat> formatOf(const FrameKey& frame) const { return {m_clip.wanted(frame.format)}; }

private:
    std::set<std::int64_t> choose(int most);

    CheckRun& m_run;
    OpenClip& m_clip;
    hostkit::AsyncSession m_session;
    std::map<FrameKey, Outcome> m_drawn;
};

// Calls `look` with an asynchronous importer for each clip that has pictures. Clips that promise none are left out;
// without any the check is skipped.
void forEachReadAhead(PlayedPlugin& plugin, const std::function<void(ReadAheadClip&)>& look);
void forEachReadAhead(CheckRun& run, const std::function<void(ReadAheadClip&)>& look);

// The same with a few clips, more at higher levels: for demands that hardly depend on what is in a clip.
void forSomeReadAhead(CheckRun& run, const std::function<void(ReadAheadClip&)>& look);

// The same with the first clip alone.
void withReadAhead(PlayedPlugin& plugin, const std::function<void(ReadAheadClip&)>& look);
void withReadAhead(CheckRun& run, const std::function<void(ReadAheadClip&)>& look);

// Holds the plug-in's threads in a function of the host, from the next call on, until it is released or destroyed. A
// hold that nobody releases ends after a few seconds: a plug-in that waits for itself must fail, not hang.
class HeldCall {
public:
    HeldCall(hostkit::Host& host, hostkit::HostCall call);
    ~HeldCall();
    HeldCall(const HeldCall&) = delete;
    HeldCall& operator=(const HeldCall&) = delete;

    bool waitForArrival();          // false if no thread came in time
    void release();
    bool hasTimedOut() const;       // true if nobody released it

private:
    struct State;
    hostkit::Host& m_host;
    std::shared_ptr<State> m_state;
};

}  // namespace importhost::validate
