#include "importhost/validate/checks/async/ReadAheadClip.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace importhost::validate {

namespace {

constexpr std::chrono::seconds kLongestHold(4);

// Frames that wait to be collected are whole pictures with up to this many bytes a pixel.
constexpr std::int64_t kMostPixelBytes = 8;
constexpr std::int64_t kMostWaitingBytes = std::int64_t{256} << 20;
constexpr std::int64_t kFewestAtOnce = 4;

}  // namespace

std::string textOf(const FrameKey& frame) {
    return std::string("frame ")
        .append(std::to_string(frame.index))
        .append(" as ")
        .append(hostkit::codeText(static_cast<csSDK_uint32>(frame.format)));
}

// --- ReadAheadClip ----------------------------------------------------------------------------------------------

ReadAheadClip::ReadAheadClip(OpenClip& clip)
    : m_run(clip.plugin().run()), m_clip(clip), m_session(clip.plugin().session(), clip.session()) {
    const csSDK_int32 result = m_session.create().result;
    m_run.expect(result == imNoErr, "the asynchronous importer that it promises: " + hostkit::resultText(result));
}

ReadAheadClip::~ReadAheadClip() {
    if (isOpen()) {
        close();
    }
}

int ReadAheadClip::atOnce(int wanted) const {
    const std::int64_t room = kMostWaitingBytes / (m_clip.pixels() * kMostPixelBytes);
    return static_cast<int>(std::clamp<std::int64_t>(wanted, 1, std::max<std::int64_t>(room, kFewestAtOnce)));
}

std::set<std::int64_t> ReadAheadClip::choose(int most) {
    const std::int64_t count = m_clip.frameCount();
    const auto wanted = static_cast<std::size_t>(std::min<std::int64_t>(count, atOnce(most)));
    std::set<std::int64_t> chosen = {0};
    if (wanted > 1) {
        chosen.insert(count - 1);
    }
    while (chosen.size() < wanted) {
        chosen.insert(static_cast<std::int64_t>(m_run.below(static_cast<std::uint64_t>(count))));
    }
    return chosen;
}

FrameKeys ReadAheadClip::drawSome(int most, PrPixelFormat format) {
    FrameKeys keys;
    for (const std::int64_t index : choose(most)) {
        keys.push_back({index, format});
        if (!m_drawn.contains(keys.back())) {
            m_drawn[keys.back()] = outcomeOf(m_clip.frame(index, format));
        }
    }
    return keys;
}

void ReadAheadClip::announce(const FrameKey& frame) {
    m_run.expectAsyncResult("announcing " + textOf(frame), m_session.announce(timeOf(frame), formatOf(frame)).result);
}

void ReadAheadClip::announce(const FrameKeys& frames) {
    for (const FrameKey& frame : frames) {
        announce(frame);
    }
}

void ReadAheadClip::collect(const FrameKey& frame) {
    const Outcome found = outcomeOf(m_session.get(timeOf(frame), formatOf(frame)));
    const Outcome& drawn = m_drawn.at(frame);
    m_run.expectAsyncResult("collecting " + textOf(frame), found.result,
                            drawn.result == imNoErr ? aiNoError : aiUnknownError);
    m_run.expect(found.result != aiNoError || drawn.result != imNoErr || found.digest == drawn.digest,
                 textOf(frame) + " is another picture than the one that is drawn at once");
}

void ReadAheadClip::collect(const FrameKeys& frames) {
    for (const FrameKey& frame : frames) {
        collect(frame);
    }
}

void ReadAheadClip::expectNoFramesHeld(const std::string& when) {
    m_run.expectEqual("frame buffers that the plug-in holds " + when, host().frames().alive(), 0);
}

// --- Clips ------------------------------------------------------------------------------------------------------

namespace {

// False if the plug-in promises no asynchronous importer for the clip.
bool lookAt(OpenClip& clip, const std::function<void(ReadAheadClip&)>& look) {
    if (clip.info().vidInfo.supportsAsyncIO == 0) {
        return false;
    }
    ReadAheadClip async(clip);
    if (async.isOpen()) {
        look(async);
    }
    return true;
}

[[noreturn]] void skipWithoutAsync(CheckRun& run) {
    run.skip("the plug-in promises an asynchronous importer for no file");
}

}  // namespace

void forEachReadAhead(PlayedPlugin& plugin, const std::function<void(ReadAheadClip&)>& look) {
    bool any = false;
    forEachClip(plugin, Need::Pictures, [&](OpenClip& clip) { any = lookAt(clip, look) || any; });
    if (!any && !plugin.run().hasFailed()) {
        skipWithoutAsync(plugin.run());
    }
}

void forEachReadAhead(CheckRun& run, const std::function<void(ReadAheadClip&)>& look) {
    PlayedPlugin plugin(run);
    forEachReadAhead(plugin, look);
}

void forSomeReadAhead(CheckRun& run, const std::function<void(ReadAheadClip&)>& look) {
    int left = run.effort(2, 5);
    forEachReadAhead(run, [&](ReadAheadClip& async) {
        if (left-- > 0) {
            look(async);
        }
    });
}

void withReadAhead(PlayedPlugin& plugin, const std::function<void(ReadAheadClip&)>& look) {
    if (!lookAt(*firstClip(plugin, Need::Pictures), look)) {
        skipWithoutAsync(plugin.run());
    }
    plugin.run().step("");
}

void withReadAhead(CheckRun& run, const std::function<void(ReadAheadClip&)>& look) {
    PlayedPlugin plugin(run);
    withReadAhead(plugin, look);
}

// --- HeldCall ---------------------------------------------------------------------------------------------------

struct HeldCall::State {
    std::mutex mutex;
    std::condition_variable changed;
    bool hasArrived = false;
    bool isReleased = false;
    bool hasTimedOut = false;

    void pass() {
        std::unique_lock lock(mutex);
        hasArrived = true;
        changed.notify_all();
        if (!changed.wait_for(lock, kLongestHold, [this] { return isReleased; })) {
            hasTimedOut = true;
            isReleased = true;
        }
    }
};

HeldCall::HeldCall(hostkit::Host& host, hostkit::HostCall call) : m_host(host), m_state(std::make_shared<State>()) {
    host.faults().observe([state = m_state, call](hostkit::HostCall made) {
        if (made == call) {
            state->pass();
        }
    });
}

HeldCall::~HeldCall() {
    release();
    m_host.faults().observe(nullptr);
}

bool HeldCall::waitForArrival() {
    std::unique_lock lock(m_state->mutex);
    return m_state->changed.wait_for(lock, kLongestHold, [this] { return m_state->hasArrived; });
}

void HeldCall::release() {
    const std::lock_guard lock(m_state->mutex);
    m_state->isReleased = true;
    m_state->changed.notify_all();
}

bool HeldCall::hasTimedOut() const {
    const std::lock_guard lock(m_state->mutex);
    return m_state->hasTimedOut;
}

}  // namespace importhost::validate
