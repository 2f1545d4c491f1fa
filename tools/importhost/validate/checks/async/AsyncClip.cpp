#include "importhost/validate/checks/async/AsyncClip.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>

namespace importhost::validate {

namespace {

constexpr std::chrono::seconds kLongestHold(4);

// Frames that wait to be collected are whole pictures of up to so many bytes for each pixel.
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

// --- AsyncClip --------------------------------------------------------------------------------------------------

AsyncClip::AsyncClip(CheckRun& run, PlayedPlugin& plugin, OpenClip& clip)
    : m_run(run), m_clip(clip), m_session(plugin.session(), clip.session()) {
    const csSDK_int32 result = m_session.create().result;
    run.expect(result == imNoErr, "the asynchronous importer that it promises: " + hostkit::resultText(result));
}

AsyncClip::~AsyncClip() {
    if (isOpen()) {
        close();
    }
}

int AsyncClip::atOnce(int wanted) const {
    const std::int64_t room = kMostWaitingBytes / (m_clip.pixels() * kMostPixelBytes);
    return static_cast<int>(std::clamp<std::int64_t>(wanted, 1, std::max<std::int64_t>(room, kFewestAtOnce)));
}

std::set<std::int64_t> AsyncClip::choose(int most) {
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

std::vector<FrameKey> AsyncClip::drawSome(int most, PrPixelFormat format) {
    std::vector<FrameKey> keys;
    for (const std::int64_t index : choose(most)) {
        const FrameKey key{index, format};
        keys.push_back(key);
        if (!m_drawn.contains(key)) {
            const hostkit::FrameAnswer answer = m_clip.frame(index, format);
            m_drawn[key] = {answer.result, digestOf(answer.frame)};
        }
    }
    return keys;
}

void AsyncClip::expectAnswer(const std::string& call, csSDK_int32 found, csSDK_int32 wanted) {
    m_run.expectEqual(call, hostkit::asyncResultText(found), hostkit::asyncResultText(wanted));
}

void AsyncClip::announce(const FrameKey& frame) {
    expectAnswer("announcing " + textOf(frame), m_session.announce(timeOf(frame), formatOf(frame)).result, aiNoError);
}

void AsyncClip::collect(const FrameKey& frame) {
    const hostkit::AsyncFrameAnswer answer = m_session.get(timeOf(frame), formatOf(frame));
    const DrawnFrame& drawn = m_drawn.at(frame);
    expectAnswer("collecting " + textOf(frame), answer.result,
                 drawn.result == imNoErr ? csSDK_int32{aiNoError} : csSDK_int32{aiUnknownError});
    if (answer.result == aiNoError && drawn.result == imNoErr) {
        m_run.expect(digestOf(answer.frame) == drawn.pixels,
                     textOf(frame) + " is another picture than the one that is drawn at once");
    }
}

// --- Clips ------------------------------------------------------------------------------------------------------

namespace {

// False when the plug-in promises no asynchronous importer for the clip.
bool lookAt(CheckRun& run, PlayedPlugin& plugin, OpenClip& clip, const std::function<void(AsyncClip&)>& look) {
    if (clip.info().vidInfo.supportsAsyncIO == 0) {
        return false;
    }
    AsyncClip async(run, plugin, clip);
    if (async.isOpen()) {
        look(async);
    }
    return true;
}

[[noreturn]] void skipWithoutAsync(CheckRun& run) {
    run.skip("the plug-in promises an asynchronous importer for no file");
}

}  // namespace

void forEachAsyncClip(CheckRun& run, PlayedPlugin& plugin, const std::function<void(AsyncClip&)>& look) {
    bool any = false;
    forEachClip(run, plugin, Need::Pictures, [&](OpenClip& clip) { any = lookAt(run, plugin, clip, look) || any; });
    if (!any && !run.hasFailed()) {
        skipWithoutAsync(run);
    }
}

void forSomeAsyncClips(CheckRun& run, PlayedPlugin& plugin, const std::function<void(AsyncClip&)>& look) {
    int left = run.effort(2, 5);
    forEachAsyncClip(run, plugin, [&](AsyncClip& async) {
        if (left-- > 0) {
            look(async);
        }
    });
}

void withAsyncClip(CheckRun& run, PlayedPlugin& plugin, const std::function<void(AsyncClip&)>& look) {
    const auto clip = firstClip(run, plugin, Need::Pictures);
    if (!lookAt(run, plugin, *clip, look)) {
        skipWithoutAsync(run);
    }
    run.step("");
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
