#include "importhost/validate/checks/async/AsyncThreadChecks.h"

#include "importhost/validate/checks/async/AsyncClip.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <thread>

namespace importhost::validate {

namespace {

using FrameKeys = std::vector<FrameKey>;
using hostkit::HostCall;

// Time for a call that should wait, and does not, to show it; enough for a machine with more to do.
constexpr std::chrono::milliseconds kShowTime(200);

constexpr int kFrames = 12;
constexpr std::size_t kMostClips = 4;
constexpr int kFramesOfARound = 2;      // that a thread announces and collects

// All that was started on other threads, waited for at the latest in the end.
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

// A thread's work: announces two frames drawn by lot and collects them in the other order, again and again.
void announceAndCollect(const CheckRun& run, AsyncClip& async, const FrameKeys& frames, std::uint64_t seed,
                        int rounds) {
    std::mt19937_64 random(seed);
    for (int round = 0; round < rounds && (round == 0 || run.hasTime()); ++round) {
        const FrameKey& first = frames[random() % frames.size()];
        const FrameKey& second = frames[random() % frames.size()];
        async.announce(first);
        async.announce(second);
        async.collect(second);
        async.collect(first);
    }
}

// --- Clips that stay open side by side --------------------------------------------------------------------------

struct BusyClip {
    std::unique_ptr<OpenClip> open;
    std::vector<std::unique_ptr<AsyncClip>> importers;
    std::vector<FrameKeys> frames;                     // of each importer
};

// So many importers, and so many frames for each, that all their frames may wait at once.
std::vector<BusyClip> openSeveral(CheckRun& run, PlayedPlugin& plugin, int importersOfEach) {
    std::vector<const Clip*> clips;
    int room = static_cast<int>(kMostClips) * importersOfEach * kFrames;
    forEachAsyncClip(run, plugin, [&](AsyncClip& async) {
        clips.push_back(&async.clip().clip());
        room = async.atOnce(room);
    });
    clips.resize(std::min({clips.size(), kMostClips, static_cast<std::size_t>(std::max(room / importersOfEach, 1))}));
    const int importers = std::max(static_cast<int>(clips.size()) * importersOfEach, 1);
    const int framesOfEach = std::clamp(room / importers, 1, kFrames);
    std::vector<BusyClip> busy;
    for (const Clip* clip : clips) {
        BusyClip one;
        one.open = std::make_unique<OpenClip>(plugin, *clip);
        for (int i = 0; i < importersOfEach; ++i) {
            one.importers.push_back(std::make_unique<AsyncClip>(run, plugin, *one.open));
            one.frames.push_back(one.importers.back()->drawSome(framesOfEach));
        }
        busy.push_back(std::move(one));
    }
    return busy;
}

}  // namespace

// --- async-several-importers ------------------------------------------------------------------------------------

void asyncSeveralImporters(CheckRun& run) {
    PlayedPlugin plugin(run);
    std::vector<BusyClip> clips = openSeveral(run, plugin, 2);
    run.step("several clips, two asynchronous importers for each");
    for (BusyClip& clip : clips) {
        for (std::size_t i = 0; i < clip.importers.size(); ++i) {
            std::ranges::for_each(clip.frames[i], [&](const FrameKey& frame) { clip.importers[i]->announce(frame); });
        }
    }
    for (BusyClip& clip : clips) {
        clip.importers.front()->flush();
    }
    for (BusyClip& clip : clips) {
        for (std::size_t i = clip.importers.size(); i-- > 0;) {
            std::ranges::for_each(clip.frames[i], [&](const FrameKey& frame) { clip.importers[i]->collect(frame); });
        }
    }
    for (BusyClip& clip : clips) {
        clip.importers.front()->close();
        std::ranges::for_each(clip.frames[1], [&](const FrameKey& frame) { clip.importers[1]->collect(frame); });
    }
    clips.clear();
    run.step("");
}

// --- async-threads ----------------------------------------------------------------------------------------------

namespace {

// At least two threads, and no more than so many that all their frames may wait at once.
int threadsFor(const std::vector<BusyClip>& clips, int threads) {
    int frames = threads * kFramesOfARound;
    for (const BusyClip& clip : clips) {
        frames = clip.importers.front()->atOnce(frames);
    }
    return std::max(frames / kFramesOfARound, 2);
}

int roundsFor(const CheckRun& run, const std::vector<BusyClip>& clips, int atLowest, int atHighest) {
    int rounds = run.effort(atLowest, atHighest);
    for (const BusyClip& clip : clips) {
        rounds = std::min(rounds, frameBudget(run, *clip.open, atLowest, atHighest));
    }
    return rounds;
}

void playOnThreads(CheckRun& run, std::vector<BusyClip>& clips, int mostThreads, int rounds) {
    Threads busy;
    for (int i = 0; i < threadsFor(clips, mostThreads); ++i) {
        BusyClip& clip = clips[static_cast<std::size_t>(i) % clips.size()];
        busy.start([&run, &clip, seed = run.random()(), rounds] {
            announceAndCollect(run, *clip.importers.front(), clip.frames.front(), seed, rounds);
        });
    }
    // Meanwhile the editor draws a frame at once, and drops what was announced.
    for (int round = 0; round < rounds && (round == 0 || run.hasTime()); ++round) {
        BusyClip& clip = clips[static_cast<std::size_t>(round) % clips.size()];
        const csSDK_int32 result = clip.open->frame(clip.frames.front().front().index).result;
        run.expect(result == imNoErr || result == imFileReadFailed || result == imBadCompression,
                   "a frame drawn at once meanwhile: " + hostkit::resultText(result));
        if (round % 4 == 3) {
            clip.importers.front()->flush();
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
    std::vector<BusyClip> clips = openSeveral(run, plugin, 1);
    if (!run.hasFailed()) {
        run.step("four threads on one asynchronous importer");
        std::vector<BusyClip> one;
        one.push_back(std::move(clips.front()));
        playOnThreads(run, one, 4, roundsFor(run, one, 5, 40));
        clips.front() = std::move(one.front());
        run.step("six threads on several asynchronous importers");
        playOnThreads(run, clips, 6, roundsFor(run, clips, 5, 30));
    }
    clips.clear();
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
    run.expectEqual("an asynchronous importer, asked for by two threads at once",
                    hostkit::resultText(async.create().result), hostkit::resultText(imNoErr));
    if (async.isOpen()) {
        const std::vector<imFrameFormat> formats = {open.wanted(open.formats().front())};
        async.announce(open.timeOf(0), formats);
        picture = digestOf(async.get(open.timeOf(0), formats).frame);
    }
}

}  // namespace

void asyncFirstTouch(CheckRun& run) {
    const Clip* clip = nullptr;
    std::uint64_t usual = 0;
    int rounds = 0;
    {
        PlayedPlugin plugin(run);
        withAsyncClip(run, plugin, [&](AsyncClip& async) {
            clip = &async.clip().clip();
            usual = digestOf(async.clip().frame(0).frame);
            rounds = frameBudget(run, async.clip(), 10, 60);
        });
    }
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
bool holdFirstFrame(CheckRun& run, AsyncClip& async, HeldCall& held, const FrameKeys& frames) {
    async.announce(frames.front());
    return run.expect(held.waitForArrival(), "an announced frame is not decoded before it is collected");
}

}  // namespace

void asyncAnnouncingDoesNotWait(CheckRun& run) {
    PlayedPlugin plugin(run);
    withAsyncClip(run, plugin, [&](AsyncClip& async) {
        const FrameKeys frames = async.drawSome(6);
        HeldCall held(plugin.host(), HostCall::CreatePPix);
        if (holdFirstFrame(run, async, held, frames)) {
            for (const FrameKey& frame : frames) {
                async.announce(frame);
            }
            run.expect(!held.hasTimedOut(), "announcing waits until the decode of another frame has ended");
        }
        held.release();
        for (const FrameKey& frame : frames) {
            async.collect(frame);
        }
    });
}

void asyncFlushWaits(CheckRun& run) {
    PlayedPlugin plugin(run);
    withAsyncClip(run, plugin, [&](AsyncClip& async) {
        const FrameKeys frames = async.drawSome(2);
        HeldCall held(plugin.host(), HostCall::CreatePPix);
        if (holdFirstFrame(run, async, held, frames)) {
            CallAside flushing([&] { async.flush(); });
            run.expect(!flushing.returnsAtOnce(), "flushing returns while a decode is running");
            held.release();
            flushing.join();
            run.expectEqual("frame buffers that the plug-in holds after the flush", plugin.host().frames().alive(), 0);
        }
        held.release();
        async.collect(frames.front());
    });
}

void asyncCloseWaits(CheckRun& run) {
    PlayedPlugin plugin(run);
    withAsyncClip(run, plugin, [&](AsyncClip& async) {
        const std::string clip = async.clip().clip().name;
        const FrameKeys frames = async.drawSome(3);
        for (const FrameKey& frame : frames) {
            async.announce(frame);
        }
        async.flush();
        HeldCall held(plugin.host(), HostCall::CreatePPix);
        run.step(clip + ", closed while a frame is being collected");
        CallAside collecting([&] { async.collect(frames.front()); });
        if (run.expect(held.waitForArrival(), "a frame that is collected is not decoded")) {
            CallAside closing([&] { async.close(); });
            run.expect(!closing.returnsAtOnce(), "closing returns while a frame is being collected");
            held.release();
            closing.join();
        }
        held.release();
        collecting.join();
        run.expectEqual("frame buffers that the plug-in holds after the close", plugin.host().frames().alive(), 0);
    });
}

// --- async-outlives-its-clip ------------------------------------------------------------------------------------

void asyncOutlivesItsClip(CheckRun& run) {
    PlayedPlugin plugin(run);
    forSomeAsyncClips(run, plugin, [&](AsyncClip& async) {
        const std::string clip = async.clip().clip().name;
        const FrameKeys frames = async.drawSome(run.effort(3, 8));
        async.announce(frames.front());
        run.step(clip + ", the clip quieted");
        run.expectEqual("quieting", hostkit::resultText(async.clip().session().quiet()), hostkit::resultText(imNoErr));
        async.announce(frames.back());
        async.collect(frames.front());
        run.step(clip + ", the clip closed");
        run.expectEqual("closing", hostkit::resultText(async.clip().session().close()), hostkit::resultText(imNoErr));
        async.collect(frames.back());
        for (const FrameKey& frame : frames) {
            async.announce(frame);
        }
        for (const FrameKey& frame : frames) {
            async.collect(frame);
        }
        async.flush();
        async.close();
    });
}

// --- async-unloads ----------------------------------------------------------------------------------------------

void asyncUnloads(CheckRun& run) {
    // Whatever a thread that was left behind does next, it does it soon.
    constexpr std::chrono::milliseconds kLinger(150);
    const std::string fileName = hostkit::toUtf8(run.plugin().filename());
    for (int round = 0; round < run.effort(1, 4); ++round) {
        {
            PlayedPlugin plugin(run);
            withAsyncClip(run, plugin, [&](AsyncClip& async) {
                const FrameKeys frames = async.drawSome(kFrames);
                for (const FrameKey& frame : frames) {
                    async.announce(frame);
                }
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
