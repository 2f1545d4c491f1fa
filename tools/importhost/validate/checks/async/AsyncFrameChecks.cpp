#include "importhost/validate/checks/async/AsyncFrameChecks.h"

#include "importhost/validate/checks/async/ReadAheadClip.h"

#include <algorithm>
#include <limits>
#include <thread>

namespace importhost::validate {

namespace {

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

}  // namespace

// --- async-equals-sync ------------------------------------------------------------------------------------------

void asyncEqualsSync(CheckRun& run) {
    forEachReadAhead(run, [&](ReadAheadClip& async) {
        const std::vector<PrPixelFormat>& formats = async.clip().formats();
        const auto most = static_cast<std::size_t>(frameBudget(run, async.clip(), 1, 20));
        for (std::size_t i = 0; i < std::min(most, formats.size()); ++i) {
            if (i > 0 && !run.hasTime()) {
                run.note("time is short: " + std::to_string(i) + " of its formats compared");
                break;
            }
            const FrameKeys frames = async.drawSome(i == 0 ? run.effort(4, 16) : 2, formats[i]);
            async.announce(frames);
            async.collect(frames);
        }
    });
}

// --- async-orders -----------------------------------------------------------------------------------------------

void asyncOrders(CheckRun& run) {
    forSomeReadAhead(run, [&](ReadAheadClip& async) {
        const FrameKeys frames = async.drawSome(run.effort(4, 16));
        const std::pair<FrameKeys, FrameKeys> orders[] = {
            {frames, reversed(frames)},
            {reversed(frames), frames},
            {shuffled(run, frames), frames},
            {frames, shuffled(run, frames)},
            {shuffled(run, frames), shuffled(run, frames)},
        };
        for (const auto& [announced, collected] : orders) {
            async.announce(announced);
            async.collect(collected);
        }
    });
}

// --- async-duplicates -------------------------------------------------------------------------------------------

void asyncDuplicates(CheckRun& run) {
    forSomeReadAhead(run, [&](ReadAheadClip& async) {
        const FrameKeys frames = async.drawSome(run.effort(2, 8));
        async.announce(frames);
        async.announce(frames);
        async.collect(frames);
        async.collect(frames);
        async.announce(frames);
        async.announce(frames);
        async.collect(frames);
        async.flush();
        async.collect(frames);
    });
}

// --- async-unannounced ------------------------------------------------------------------------------------------

void asyncUnannounced(CheckRun& run) {
    forSomeReadAhead(run, [&](ReadAheadClip& async) {
        const FrameKeys frames = async.drawSome(run.effort(3, 12));
        async.collect(frames);
        async.announce(frames.front());
        async.collect(reversed(frames));
        async.collect(frames);
    });
}

// --- async-dropped-frames ---------------------------------------------------------------------------------------

namespace {

constexpr int kMostLooks = 200;
constexpr std::chrono::milliseconds kLookAgain(5);

// Waits until `count` frame buffers were made, or for a second, because a failed decode makes none.
void waitForFrames(hostkit::Host& host, int count) {
    for (int look = 0; look < kMostLooks && host.frames().created() < count; ++look) {
        std::this_thread::sleep_for(kLookAgain);
    }
}

}  // namespace

void asyncDroppedFrames(CheckRun& run) {
    forSomeReadAhead(run, [&](ReadAheadClip& async) {
        const FrameKeys frames = async.drawSome(run.effort(3, 12));
        async.flush();
        const int before = async.host().frames().created();
        async.announce(frames);
        waitForFrames(async.host(), before + static_cast<int>(frames.size()));
        async.flush();
        async.expectNoFramesHeld("after a flush of finished frames");
        async.announce(frames);
        async.flush();
        async.expectNoFramesHeld("after a flush of frames just announced");
        async.collect(frames);
        async.announce(frames);
        async.close();
        async.expectNoFramesHeld("after the close");
    });
}

// --- async-cancel -----------------------------------------------------------------------------------------------

void asyncCancel(CheckRun& run) {
    forSomeReadAhead(run, [&](ReadAheadClip& async) {
        const FrameKeys frames = async.drawSome(2);
        async.announce(frames);
        for (const FrameKey& frame : frames) {
            run.expectAsyncResult("cancelling " + textOf(frame),
                                  async.session().cancel(async.timeOf(frame), async.formatOf(frame)).result,
                                  aiUnsupported);
        }
        async.collect(frames);
    });
}

// --- async-unknown-selectors ------------------------------------------------------------------------------------

void asyncUnknownSelectors(CheckRun& run) {
    withReadAhead(run, [&](ReadAheadClip& async) {
        const FrameKeys frames = async.drawSome(1);
        async.announce(frames);
        for (const csSDK_int32 selector :
             {-1, 7, 8, 99, std::numeric_limits<csSDK_int32>::max(), std::numeric_limits<csSDK_int32>::min()}) {
            run.expectAsyncResult("asynchronous selector " + std::to_string(selector),
                                  async.session().call(selector, nullptr), aiUnsupported);
        }
        hostkit::HostRecord<aiAsyncRequest> request;
        request->inPrivateData = nullptr;
        for (const csSDK_int32 selector : {aiContinueToWaitForAsyncIO, aiSelectEfficientRenderTime}) {
            run.expectAsyncResult("asynchronous selector " + std::to_string(selector),
                                  async.session().call(selector, request.data()), aiUnsupported);
        }
        run.expectAsyncResult("closing no importer", async.session().call(aiClose, nullptr));
        async.collect(frames);
    });
}

// --- async-out-of-range -----------------------------------------------------------------------------------------

void asyncOutOfRange(CheckRun& run) {
    forSomeReadAhead(run, [&](ReadAheadClip& async) {
        const FrameKeys frames = async.drawSome(2);
        const std::int64_t count = async.clip().frameCount();
        const PrTime duration = async.clip().timeOf(1);
        for (const PrTime time : {async.clip().timeOf(count + 1), async.clip().timeOf(2 * count + 1), -2 * duration}) {
            const std::string what = "a frame at tick " + std::to_string(time);
            const std::vector<imFrameFormat> formats = async.formatOf(frames.front());
            run.expectAsyncResult("announcing " + what, async.session().announce(time, formats).result);
            async.announce(frames.front());
            run.expectAsyncResult("collecting " + what, async.session().get(time, formats).result, aiUnknownError);
            async.collect(frames.front());
        }
        async.collect(frames);
    });
}

// --- async-crowds -----------------------------------------------------------------------------------------------

void asyncCrowds(CheckRun& run) {
    withReadAhead(run, [&](ReadAheadClip& async) {
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
            async.expectNoFramesHeld("after the flush of a crowd");
        }
    });
}

}  // namespace importhost::validate
