#include "importhost/validate/checks/async/AsyncFrameChecks.h"

#include "importhost/validate/checks/async/AsyncClip.h"

#include <algorithm>
#include <limits>
#include <thread>

namespace importhost::validate {

namespace {

using FrameKeys = std::vector<FrameKey>;

FrameKeys reversed(FrameKeys frames) {
    std::ranges::reverse(frames);
    return frames;
}

FrameKeys shuffled(CheckRun& run, FrameKeys frames) {
    for (std::size_t i = frames.size(); i > 1; --i) {
        std::swap(frames[i - 1], frames[run.below(i)]);
    }
    return frames;
}

void announceAll(AsyncClip& async, const FrameKeys& frames) {
    for (const FrameKey& frame : frames) {
        async.announce(frame);
    }
}

void collectAll(AsyncClip& async, const FrameKeys& frames) {
    for (const FrameKey& frame : frames) {
        async.collect(frame);
    }
}

}  // namespace

// --- async-equals-sync ------------------------------------------------------------------------------------------

void asyncEqualsSync(CheckRun& run) {
    PlayedPlugin plugin(run);
    forEachAsyncClip(run, plugin, [&](AsyncClip& async) {
        const std::vector<PrPixelFormat>& formats = async.clip().formats();
        const auto most = static_cast<std::size_t>(frameBudget(run, async.clip(), 1, 20));
        for (std::size_t i = 0; i < std::min(most, formats.size()); ++i) {
            if (i > 0 && !run.hasTime()) {
                run.note("time is short: " + std::to_string(i) + " of its formats compared");
                break;
            }
            const FrameKeys frames = async.drawSome(i == 0 ? run.effort(4, 16) : 2, formats[i]);
            announceAll(async, frames);
            collectAll(async, frames);
        }
    });
}

// --- async-orders -----------------------------------------------------------------------------------------------

void asyncOrders(CheckRun& run) {
    PlayedPlugin plugin(run);
    forSomeAsyncClips(run, plugin, [&](AsyncClip& async) {
        const FrameKeys frames = async.drawSome(run.effort(4, 16));
        const std::pair<FrameKeys, FrameKeys> orders[] = {
            {frames, reversed(frames)},
            {reversed(frames), frames},
            {shuffled(run, frames), frames},
            {frames, shuffled(run, frames)},
            {shuffled(run, frames), shuffled(run, frames)},
        };
        for (const auto& [announced, collected] : orders) {
            announceAll(async, announced);
            collectAll(async, collected);
        }
    });
}

// --- async-duplicates -------------------------------------------------------------------------------------------

void asyncDuplicates(CheckRun& run) {
    PlayedPlugin plugin(run);
    forSomeAsyncClips(run, plugin, [&](AsyncClip& async) {
        const FrameKeys frames = async.drawSome(run.effort(2, 8));
        announceAll(async, frames);
        announceAll(async, frames);
        collectAll(async, frames);
        collectAll(async, frames);
        announceAll(async, frames);
        announceAll(async, frames);
        collectAll(async, frames);
        async.flush();
        collectAll(async, frames);
    });
}

// --- async-unannounced ------------------------------------------------------------------------------------------

void asyncUnannounced(CheckRun& run) {
    PlayedPlugin plugin(run);
    forSomeAsyncClips(run, plugin, [&](AsyncClip& async) {
        const FrameKeys frames = async.drawSome(run.effort(3, 12));
        collectAll(async, frames);
        announceAll(async, {frames.front()});
        collectAll(async, reversed(frames));
        collectAll(async, frames);
    });
}

// --- async-dropped-frames ---------------------------------------------------------------------------------------

namespace {

constexpr int kMostLooks = 200;
constexpr std::chrono::milliseconds kLookAgain(5);

// Until so many frame buffers were made, or for a second: a decode that fails makes none.
void waitForFrames(hostkit::Host& host, int count) {
    for (int look = 0; look < kMostLooks && host.frames().created() < count; ++look) {
        std::this_thread::sleep_for(kLookAgain);
    }
}

void expectNoneAlive(CheckRun& run, hostkit::Host& host, const std::string& when) {
    run.expectEqual("frame buffers that the plug-in holds " + when, host.frames().alive(), 0);
}

}  // namespace

void asyncDroppedFrames(CheckRun& run) {
    PlayedPlugin plugin(run);
    hostkit::Host& host = plugin.host();
    forSomeAsyncClips(run, plugin, [&](AsyncClip& async) {
        const FrameKeys frames = async.drawSome(run.effort(3, 12));
        async.flush();
        const int before = host.frames().created();
        announceAll(async, frames);
        waitForFrames(host, before + static_cast<int>(frames.size()));
        async.flush();
        expectNoneAlive(run, host, "after a flush of finished frames");
        announceAll(async, frames);
        async.flush();
        expectNoneAlive(run, host, "after a flush of frames just announced");
        collectAll(async, frames);
        announceAll(async, frames);
        async.close();
        expectNoneAlive(run, host, "after the close");
    });
}

// --- async-cancel -----------------------------------------------------------------------------------------------

void asyncCancel(CheckRun& run) {
    PlayedPlugin plugin(run);
    forSomeAsyncClips(run, plugin, [&](AsyncClip& async) {
        const FrameKeys frames = async.drawSome(2);
        announceAll(async, frames);
        for (const FrameKey& frame : frames) {
            const csSDK_int32 result = async.session().cancel(async.timeOf(frame), async.formatOf(frame)).result;
            async.expectAnswer("cancelling " + textOf(frame), result, aiUnsupported);
        }
        collectAll(async, frames);
    });
}

// --- async-unknown-selectors ------------------------------------------------------------------------------------

void asyncUnknownSelectors(CheckRun& run) {
    PlayedPlugin plugin(run);
    withAsyncClip(run, plugin, [&](AsyncClip& async) {
        const FrameKeys frames = async.drawSome(1);
        announceAll(async, frames);
        for (const csSDK_int32 selector :
             {-1, 7, 8, 99, std::numeric_limits<csSDK_int32>::max(), std::numeric_limits<csSDK_int32>::min()}) {
            const csSDK_int32 result = async.session().call(selector, nullptr);
            async.expectAnswer("asynchronous selector " + std::to_string(selector), result, aiUnsupported);
        }
        hostkit::HostRecord<aiAsyncRequest> request;
        request->inPrivateData = nullptr;
        for (const csSDK_int32 selector : {aiContinueToWaitForAsyncIO, aiSelectEfficientRenderTime}) {
            const csSDK_int32 result = async.session().call(selector, request.data());
            async.expectAnswer("asynchronous selector " + std::to_string(selector), result, aiUnsupported);
        }
        async.expectAnswer("closing no importer", async.session().call(aiClose, nullptr), aiNoError);
        collectAll(async, frames);
    });
}

// --- async-out-of-range -----------------------------------------------------------------------------------------

void asyncOutOfRange(CheckRun& run) {
    PlayedPlugin plugin(run);
    forSomeAsyncClips(run, plugin, [&](AsyncClip& async) {
        const FrameKeys frames = async.drawSome(2);
        const std::int64_t count = async.clip().frameCount();
        const PrTime duration = async.clip().timeOf(1);
        for (const PrTime time : {async.clip().timeOf(count + 1), async.clip().timeOf(2 * count + 1), -2 * duration}) {
            const std::string what = "a frame at tick " + std::to_string(time);
            const std::vector<imFrameFormat> formats = async.formatOf(frames.front());
            async.expectAnswer("announcing " + what, async.session().announce(time, formats).result, aiNoError);
            async.announce(frames.front());
            async.expectAnswer("collecting " + what, async.session().get(time, formats).result, aiUnknownError);
            async.collect(frames.front());
        }
        collectAll(async, frames);
    });
}

// --- async-crowds -----------------------------------------------------------------------------------------------

void asyncCrowds(CheckRun& run) {
    PlayedPlugin plugin(run);
    withAsyncClip(run, plugin, [&](AsyncClip& async) {
        const FrameKeys frames = async.drawSome(12);
        const auto crowd = static_cast<std::size_t>(async.atOnce(run.effort(100, 250)));
        for (const bool isCollected : {true, false}) {
            for (std::size_t i = 0; i < crowd; ++i) {
                async.announce(frames[i % frames.size()]);
            }
            for (std::size_t i = 0; i < (isCollected ? crowd : 1); ++i) {
                async.collect(frames[i * 7 % frames.size()]);
            }
            async.flush();
            expectNoneAlive(run, plugin.host(), "after the flush of a crowd");
        }
    });
}

}  // namespace importhost::validate
