#include "importhost/validate/checks/async/AsyncThreadChecks.h"

#include "importhost/validate/checks/async/ReadAheadClip.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <span>
#include <thread>

namespace importhost::validate {

namespace {

using hostkit::HostCall;

// Long enough for a call that should wait, and does not, to return on a busy machine.
constexpr std::chrono::milliseconds kShowTime(200);

constexpr int kFrames = 12;
constexpr std::size_t kMostClips = 4;
constexpr int kFramesOfARound = 2;      // that a thread announces and collects

// Work on other threads, waited for at the latest in the destructor.
class Threads {
public:
    void start(std::function<void()> work) { m_threads.push_back(std::async(std::launch::async, std::move(work))); }
    void join() {
        for (std::future<void>& thread : m_threads) {
            thread.get();
        }
        m_threads.clear();
    }

private:
    std::vector<std::future<void>> m_threads;
};

// One of several asynchronous importers that are used side by side.
struct Busy {
    std::shared_ptr<OpenClip> open;         // shared by the importers of one clip
    std::unique_ptr<ReadAheadClip> async;
    FrameKeys frames;
};

// Chooses clips and frames so that all frames may wait at once. The importers of a clip are next to each other.
std::vector<Busy> openSeveral(PlayedPlugin& plugin, int importersOfEach) {
    std::vector<const Clip*> clips;
    int room = static_cast<int>(kMostClips) * importersOfEach * kFrames;
    forEachReadAhead(plugin, [&](ReadAheadClip& async) {
        clips.push_back(&async.clip().clip());
        room = async.atOnce(room);
    });
    clips.resize(std::min({clips.size(), kMostClips, static_cast<std::size_t>(std::max(room / importersOfEach, 1))}));
    const int importers = std::max(static_cast<int>(clips.size()) * importersOfEach, 1);
    std::vector<Busy> busy;
    for (const Clip* clip : clips) {
        const auto open = std::make_shared<OpenClip>(plugin, *clip);
        for (int i = 0; i < importersOfEach; ++i) {
            busy.push_back({open, std::make_unique<ReadAheadClip>(*open), {}});
            busy.back().frames = busy.back().async->drawSome(std::clamp(room / importers, 1, kFrames));
        }
    }
    return busy;
}

}  // namespace

// --- async-several-importers ------------------------------------------------------------------------------------

void asyncSeveralImporters(CheckRun& run) {
    PlayedPlugin plugin(run);
    const std::vector<Busy> importers = openSeveral(plugin, 2);
    run.step("several clips, two asynchronous importers for each");
    for (const Busy& one : importers) {
        one.async->announce(one.frames);
    }
    for (std::size_t i = 0; i < importers.size(); i += 2) {
        importers[i].async->flush();
    }
    for (std::size_t i = importers.size(); i-- > 0;) {
        importers[i].async->collect(importers[i].frames);
    }
    for (std::size_t i = 0; i < importers.size(); i += 2) {
        importers[i].async->close();
        importers[i + 1].async->collect(importers[i + 1].frames);
    }
}

// --- async-threads ----------------------------------------------------------------------------------------------

namespace {

// As many threads as may have all their frames waiting at once, at least two.
int threadsFor(std::span<const Busy> importers, int threads) {
    int frames = threads * kFramesOfARound;
    for (const Busy& one : importers) {
        frames = one.async->atOnce(frames);
    }
    return std::max(frames / kFramesOfARound, 2);
}

int roundsFor(const CheckRun& run, std::span<const Busy> importers, int atHighest) {
    int rounds = atHighest;
    for (const Busy& one : importers) {
        rounds = std::min(rounds, frameBudget(run, *one.open, 5, atHighest));
    }
    return rounds;
}

// A thread's work: announces two random frames and collects them in the other order, again and again.
void announceAndCollect(const CheckRun& run, const Busy& one, std::uint64_t seed, int rounds) {
    std::mt19937_64 random(seed);
    for (int round = 0; round < rounds && (round == 0 || run.hasTime()); ++round) {
        const FrameKey& first = one.frames[random() % one.frames.size()];
        const FrameKey& second = one.frames[random() % one.frames.size()];
        one.async->announce({first, second});
        one.async->collect({second, first});
    }
}

void playOnThreads(CheckRun& run, std::span<const Busy> importers, int mostThreads, int mostRounds) {
    const int rounds = roundsFor(run, importers, mostRounds);
    Threads busy;
    for (int i = 0; i < threadsFor(importers, mostThreads); ++i) {
        const Busy& one = importers[static_cast<std::size_t>(i) % importers.size()];
        busy.start([&run, &one, seed = run.random()(), rounds] { announceAndCollect(run, one, seed, rounds); });
    }
    // Meanwhile the editor draws a frame at once, and drops what was announced.
    for (int round = 0; round < rounds && (round == 0 || run.hasTime()); ++round) {
        const Busy& one = importers[static_cast<std::size_t>(round) % importers.size()];
        const csSDK_int32 result = one.open->frame(one.frames.front().index).result;
        run.expect(result == imNoErr || result == imFileReadFailed || result == imBadCompression,
                   "a frame drawn at once meanwhile: " + hostkit::resultText(result));
        if (round % 4 == 3) {
            one.async->flush();
        }
    }
    busy.join();
    if (!run.hasTime()) {
        run.note("time is short: not all of " + std::to_string(rounds) + " rounds were played");
    }
}

}  // namespace

void asyncThreads(CheckRun& run) {
    PlayedPlugin plugin(run);
    std::vector<Busy> importers = openSeveral(plugin, 1);
    if (!run.hasFailed()) {
        run.step("four threads on one asynchronous importer");
        playOnThreads(run, std::span(importers).first(1), 4, 40);
        run.step("six threads on several asynchronous importers");
        playOnThreads(run, importers, 6, 30);
    }
    importers.clear();
    run.expectEqual("frame buffers that the plug-in holds after the close", plugin.host().frames().alive(), 0);
    run.step("");
}

// --- async-first-touch ------------------------------------------------------------------------------------------

namespace {

// Opens the clip, describes it and collects a frame, from the moment on at which the other thread does so too.
void touch(CheckRun& run, PlayedPlugin& plugin, const Clip& clip, const std::function<void()>& meet,
           std::optional<std::uint64_t>& picture) {
    meet();
    OpenClip open(plugin, clip);
    if (!run.expect(open.isDescribed(), "opened by two threads at once: opening " +
                                            hostkit::resultText(open.openResult()) + ", description " +
                                            hostkit::resultText(open.infoResult()))) {
        return;
    }
    hostkit::AsyncSession async(plugin.session(), open.session());
    run.expectResult("an asynchronous importer, asked for by two threads at once", async.create().result);
    if (async.isOpen()) {
        const std::vector<imFrameFormat> formats = {open.wanted()};
        async.announce(open.timeOf(0), formats);
        picture = digestOf(async.get(open.timeOf(0), formats).frame);
    }
}

}  // namespace

void asyncFirstTouch(CheckRun& run) {
    const Clip* clip = nullptr;
    std::uint64_t usual = 0;
    int rounds = 0;
    withReadAhead(run, [&](ReadAheadClip& async) {
        clip = &async.clip().clip();
        usual = digestOf(async.clip().frame(0).frame);
        rounds = frameBudget(run, async.clip(), 10, 60);
    });
    for (int round = 0; round < rounds && !run.hasFailed(); ++round) {
        if (!run.hasTime()) {
            run.note("time is short: " + std::to_string(round) + " of " + std::to_string(rounds) + " rounds played");
            break;
        }
        run.step(clip->name + ", touched by two threads, round " + std::to_string(round + 1));
        PlayedPlugin plugin(run);           // loaded anew: its first use is over after one round
        std::atomic<int> waiting = 2;
        const auto meet = [&waiting] {
            --waiting;
            while (waiting > 0) {
                std::this_thread::yield();
            }
        };
        std::optional<std::uint64_t> pictures[2];
        Threads threads;
        for (std::optional<std::uint64_t>& one : pictures) {
            threads.start([&] { touch(run, plugin, *clip, meet, one); });
        }
        threads.join();
        run.expect(run.hasFailed() || (pictures[0] == usual && pictures[1] == usual),
                   "a first frame is another picture than the one that is drawn at once");
    }
    run.step("");
}

// --- Calls that wait, and calls that do not ---------------------------------------------------------------------

namespace {

// A call on another thread, and whether it has returned.
class CallAside {
public:
    explicit CallAside(std::function<void()> call)
        : m_done(std::async(std::launch::async, [this, call = std::move(call)] {
              m_hasBegun.set_value();
              call();
              m_hasReturned = true;
          })) {}

    // Whether it returns within the time that a call needs that waits for nothing. To be asked once.
    bool returnsAtOnce() {
        m_hasBegun.get_future().wait();
        std::this_thread::sleep_for(kShowTime);
        return m_hasReturned;
    }
    void join() { m_done.get(); }

private:
    std::promise<void> m_hasBegun;
    std::atomic<bool> m_hasReturned = false;
    std::future<void> m_done;
};

// Frame 0 announced, its decode held; false, and a failure, when the plug-in makes no frame buffer for it.
bool holdFirstFrame(CheckRun& run, ReadAheadClip& async, HeldCall& held, const FrameKeys& frames) {
    async.announce(frames.front());
    return run.expect(held.waitForArrival(), "an announced frame is not decoded before it is collected");
}

}  // namespace

void asyncAnnouncingDoesNotWait(CheckRun& run) {
    withReadAhead(run, [&](ReadAheadClip& async) {
        const FrameKeys frames = async.drawSome(6);
        HeldCall held(async.host(), HostCall::CreatePPix);
        if (holdFirstFrame(run, async, held, frames)) {
            async.announce(frames);
            run.expect(!held.hasTimedOut(), "announcing waits until the decode of another frame has ended");
        }
        held.release();
        async.collect(frames);
    });
}

void asyncFlushWaits(CheckRun& run) {
    withReadAhead(run, [&](ReadAheadClip& async) {
        const FrameKeys frames = async.drawSome(2);
        HeldCall held(async.host(), HostCall::CreatePPix);
        if (holdFirstFrame(run, async, held, frames)) {
            CallAside flushing([&] { async.flush(); });
            run.expect(!flushing.returnsAtOnce(), "flushing returns while a decode is running");
            held.release();
            flushing.join();
            async.expectNoFramesHeld("after the flush");
        }
        held.release();
        async.collect(frames.front());
    });
}

void asyncCloseWaits(CheckRun& run) {
    withReadAhead(run, [&](ReadAheadClip& async) {
        const FrameKeys frames = async.drawSome(3);
        async.announce(frames);
        async.flush();
        HeldCall held(async.host(), HostCall::CreatePPix);
        run.step(async.clip().name() + ", closed while a frame is being collected");
        CallAside collecting([&] { async.collect(frames.front()); });
        if (run.expect(held.waitForArrival(), "a frame that is collected is not decoded")) {
            CallAside closing([&] { async.close(); });
            run.expect(!closing.returnsAtOnce(), "closing returns while a frame is being collected");
            held.release();
            closing.join();
        }
        held.release();
        collecting.join();
        async.expectNoFramesHeld("after the close");
    });
}

// --- async-outlives-its-clip ------------------------------------------------------------------------------------

void asyncOutlivesItsClip(CheckRun& run) {
    forSomeReadAhead(run, [&](ReadAheadClip& async) {
        const std::string clip = async.clip().name();
        const FrameKeys frames = async.drawSome(run.effort(3, 8));
        async.announce(frames.front());
        run.step(clip + ", the clip quieted");
        run.expectResult("quieting", async.clip().session().quiet());
        async.announce(frames.back());
        async.collect(frames.front());
        run.step(clip + ", the clip closed");
        run.expectResult("closing", async.clip().session().close());
        async.collect(frames.back());
        async.announce(frames);
        async.collect(frames);
        async.flush();
        async.close();
    });
}

// --- async-unloads ----------------------------------------------------------------------------------------------

void asyncUnloads(CheckRun& run) {
    // A thread that was left running does its next work soon.
    constexpr std::chrono::milliseconds kLinger(150);
    const std::string fileName = hostkit::toUtf8(run.plugin().filename());
    for (int round = 0; round < run.effort(1, 4); ++round) {
        {
            PlayedPlugin plugin(run);
            withReadAhead(plugin, [&](ReadAheadClip& async) {
                const FrameKeys frames = async.drawSome(kFrames);
                async.announce(frames);
                async.collect(frames.front());
                async.close();
            });
            plugin.finish();
            run.step("unloading");   // a thread may touch the library while it goes
        }
        run.expect(!hostkit::PluginLibrary::isLoaded(fileName), "the library is still in the process");
        std::this_thread::sleep_for(kLinger);
    }
    run.step("");
}

}  // namespace importhost::validate
