// A codec that takes its time: what must wait for it waits, all else goes on.
#include "importhost/validate/checks/codec/CodecTopics.h"
#include "importhost/validate/checks/stage/Codec.h"
#include "importhost/validate/checks/stage/Playthrough.h"

#include "hostkit/sessions/Names.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace importhost::validate {

namespace {

// Longer than any honest wait here, on a busy machine and with a big file; a plug-in that waits in the wrong place
// waits so long. Announcing a frame is next to nothing.
constexpr std::chrono::seconds kPatience{30};
constexpr std::chrono::seconds kPatienceToAnnounce{10};

constexpr std::chrono::milliseconds kSlowness{2};

// Holds a decoding call inside the codec until it is opened, or patience has run out. A call on the thread that made
// the gate passes: it waits for itself otherwise. It must outlive the plug-in, whose thread may be in it to the end.
class Gate {
public:
    static void hold(void* gate) { static_cast<Gate*>(gate)->holdHere(); }

    bool waitUntilHeld() {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, kPatience, [this] { return m_isHeld; });
    }
    // From now on.
    void waitFor(std::chrono::seconds patience) {
        const std::lock_guard lock(m_mutex);
        m_end = Clock::now() + patience;
        m_changed.notify_all();
    }
    void open() {
        const std::lock_guard lock(m_mutex);
        m_isOpen = true;
        m_changed.notify_all();
    }
    bool ranOutOfPatience() const {
        const std::lock_guard lock(m_mutex);
        return m_ranOut;
    }
    bool sawItsOwnThread() const {
        const std::lock_guard lock(m_mutex);
        return m_sawOwnThread;
    }

private:
    using Clock = std::chrono::steady_clock;

    void holdHere() {
        std::unique_lock lock(m_mutex);
        m_isHeld = true;
        m_changed.notify_all();
        if (std::this_thread::get_id() == m_owner) {
            m_sawOwnThread = true;
            return;
        }
        while (!m_isOpen && Clock::now() < m_end) {
            m_changed.wait_until(lock, Clock::time_point(m_end));     // a copy: the end may be put off meanwhile
        }
        m_ranOut = !m_isOpen;
    }

    const std::thread::id m_owner = std::this_thread::get_id();
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    Clock::time_point m_end = Clock::now() + kPatience;
    bool m_isHeld = false;
    bool m_isOpen = false;
    bool m_ranOut = false;
    bool m_sawOwnThread = false;
};

// Every call of the function takes a little longer.
struct Slowness {
    Codec& codec;
    std::uint32_t function;

    static void delay(void* context) {
        auto& slowness = *static_cast<Slowness*>(context);
        slowness.codec.visit(slowness.function, delay, context);        // and the next one
        std::this_thread::sleep_for(kSlowness);
    }
};

// The gate is open again whatever happens in between, or the plug-in could not be ended; and nobody enters it later.
struct OpenAtEnd {
    Codec& codec;
    Gate& gate;
    ~OpenAtEnd() {
        codec.visit(kStandinDecompress, nullptr, nullptr);
        gate.open();
    }
};

// What must go on while a decoder is stuck in the codec.
void lookWhileStuck(CheckRun& run, PlayedPlugin& plugin, OpenClip& clip, hostkit::AsyncSession& async, Gate& gate,
                    const std::vector<std::uint8_t>& right) {
    const std::int64_t last = clip.frameCount() - 1;
    run.step("announcing more while one frame is being decoded");
    for (const std::int64_t frame : {last, last / 2, last}) {
        const auto answer = async.announce(clip.timeOf(frame), {clip.wanted()});
        run.expectAsyncResult("the answer to announcing a frame", answer.result);
    }
    gate.waitFor(kPatience);
    run.step("asking the clip itself for a frame while one is being decoded ahead");
    run.expect(pixelsOf(clip.frame(0).frame) == right, "the frame is not the one it was before");
    gate.waitFor(kPatience);
    run.step("opening another clip while a frame is being decoded ahead");
    {
        OpenClip other(plugin, clip.clip());
        run.expect(other.isDescribed(), "it does not open: " + hostkit::resultText(other.infoResult()));
    }
    run.expect(!gate.ranOutOfPatience(), "something waited for the frame that was being decoded");
}

void announceIntoTheGate(CheckRun& run, Codec& codec, OpenClip& clip, hostkit::AsyncSession& async, Gate& gate) {
    gate.waitFor(kPatienceToAnnounce);
    codec.visit(kStandinDecompress, Gate::hold, &gate);
    async.announce(clip.timeOf(0), {clip.wanted()});
    gate.waitFor(kPatience);
    run.expect(!gate.sawItsOwnThread(), "the frame was decoded before announcing it returned");
    run.expect(gate.waitUntilHeld(), "the announced frame was not decoded ahead");
    run.expect(!gate.ranOutOfPatience(), "announcing a frame waited until it was decoded");
}

void collectFromStuck(CheckRun& run, PlayedPlugin& plugin, Codec& codec, OpenClip& clip,
                      const std::vector<std::uint8_t>& right, Gate& gate) {
    run.step("announcing a frame");
    hostkit::AsyncSession async(plugin.session(), clip.session());
    if (async.create().result != imNoErr) {
        run.note("the plug-in offers no asynchronous importer");
        return;
    }
    const OpenAtEnd atEnd{codec, gate};
    announceIntoTheGate(run, codec, clip, async, gate);
    lookWhileStuck(run, plugin, clip, async, gate, right);
    if (run.hasFailed()) {
        return;
    }
    gate.waitFor(kPatience);
    run.step("collecting the frame that is being decoded");
    std::thread opener([&gate] {
        std::this_thread::sleep_for(10 * kSlowness);
        gate.open();
    });
    const auto answer = async.get(clip.timeOf(0), {clip.wanted()});
    opener.join();
    run.expectAsyncResult("the answer", answer.result);
    run.expect(pixelsOf(answer.frame) == right, "the frame is not the one it was before");
}

// Flushing and closing wait: afterwards nothing is decoded any more.
void endWhileStuck(CheckRun& run, PlayedPlugin& plugin, Codec& codec, OpenClip& clip, bool byFlush,
                   Gate& gate) {
    run.step(byFlush ? "flushing while a frame is being decoded" : "closing while a frame is being decoded");
    hostkit::AsyncSession async(plugin.session(), clip.session());
    if (async.create().result != imNoErr) {
        return;
    }
    const OpenAtEnd atEnd{codec, gate};
    announceIntoTheGate(run, codec, clip, async, gate);
    const int framesBefore = plugin.host().frames().alive();
    std::atomic<bool> isOpen = false;
    std::thread opener([&] {
        std::this_thread::sleep_for(10 * kSlowness);
        isOpen = true;
        gate.open();
    });
    const csSDK_int32 result = byFlush ? async.flush() : async.close();
    const bool hasWaited = isOpen;
    opener.join();
    run.expectAsyncResult("the answer", result);
    run.expect(hasWaited, "it did not wait for the frame that was being decoded");
    run.expect(plugin.host().frames().alive() < framesBefore || framesBefore == 0,
               "the frame that nobody collected is still alive");
}

void playSlowly(PlayedPlugin& plugin, Codec& codec, const PlayedClip& clip) {
    for (const std::uint32_t function : {kStandinDecompress, kStandinDecompressBegin, kStandinDecompressQuery}) {
        Slowness slowness{codec, function};
        codec.visit(function, Slowness::delay, &slowness);
        playWell(plugin, clip, clip.name() + ", " + codecFunctionName(function) + " is slow");
        codec.reset();
    }
}

}  // namespace

void codecIsSlow(CheckRun& run) {
    Gate gates[3];
    PlayedPlugin plugin(run);
    Codec codec(run);
    const auto clip = firstClip(plugin, Need::Pictures);
    const std::vector<std::uint8_t> right = pixelsOf(clip->frame(0).frame);
    if (right.empty()) {
        run.skip("the first frame of " + clip->clip().name + " cannot be had at all");
    }
    collectFromStuck(run, plugin, codec, *clip, right, gates[0]);
    const bool isStuckAnyway = run.hasFailed();         // more would take long and say nothing new
    if (!isStuckAnyway) {
        endWhileStuck(run, plugin, codec, *clip, true, gates[1]);
        endWhileStuck(run, plugin, codec, *clip, false, gates[2]);
    }
    if (!run.hasFailed()) {
        forPlayedClips(plugin, 1, [&](const PlayedClip& played) { playSlowly(plugin, codec, played); });
    }
}

}  // namespace importhost::validate
