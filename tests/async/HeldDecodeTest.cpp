// Decodes that are held inside the codec or the host while other calls are made: which calls return, and which wait.
#include "async/support/AsyncTest.h"

#include <algorithm>
#include <future>
#include <thread>

namespace {

class HeldDecode : public AsyncTest {
protected:
    // Announces frame 0 and waits until its decode is held inside the codec.
    void holdFrameZero(AsyncClip& async) {
        holdNextDecode();
        EXPECT_EQ(async.announce(0, yuy3()), aiNoError);
        EXPECT_TRUE(gate().waitForArrival());
    }

    std::future<hostkit::FrameAnswer> collectOnAThread(AsyncClip& async, int frame) {
        return std::async(std::launch::async, [&async, frame] { return async.collect(timeOf(frame), yuy3()); });
    }

    // Gives a call that should wait, but does not, time to return.
    void giveTimeToReturn() {
        for (int i = 0; i < 100; ++i) {
            messages();
            std::this_thread::yield();
        }
    }
};

TEST_F(HeldDecode, LetsFurtherFramesBeAnnounced) {
    AsyncClip& async = openAsync(smallVideo());
    holdFrameZero(async);
    for (int frame = 1; frame < 6; ++frame) {
        EXPECT_EQ(async.announce(timeOf(frame), yuy3()), aiNoError);
        EXPECT_TRUE(waitUntilLogged("frameIndex:  " + std::to_string(frame) + " (total: 6)"));
    }
    EXPECT_EQ(codec().calls[kStandinDecompress], 1u);
}

// The next frame's read has failed, and its collection has returned, while the first one's decode is still held.
TEST_F(HeldDecode, LetsAnotherFrameBeReadCompletely) {
    AsyncClip& async = openAsync(openClip(write("clip.avi", withFrameBeyondTheEnd(smallVideo(), 5))));
    holdFrameZero(async);
    EXPECT_EQ(async.announce(timeOf(5), yuy3()), aiNoError);
    EXPECT_EQ(async.collect(timeOf(5), yuy3()).result, aiUnknownError);
    EXPECT_EQ(logged("    OnGetFrame: [aiUnknownError] (2), [imFileReadFailed] (33)"), 1);
    EXPECT_FALSE(gate().isOpen());
}

// A read of a dropped frame logs a line at its start. Only one read runs at a time, so the third line shows that two
// reads have finished.
TEST_F(HeldDecode, LetsSeveralFurtherFramesBeRead) {
    aviwriter::SampleOptions options = smallVideo();
    options.dropped = {1, 2, 3};
    AsyncClip& async = openAsync(options);
    holdFrameZero(async);
    for (const int frame : {1, 2, 3}) {
        async.announce(timeOf(frame), yuy3());
    }
    for (const char* line : {"Empty frame: 1, frame read: 0", "Empty frame: 2, frame read: 0",
                             "Empty frame: 3, frame read: 0"}) {
        EXPECT_TRUE(waitUntilLogged(line));
    }
    EXPECT_FALSE(gate().isOpen());
    EXPECT_EQ(codec().calls[kStandinDecompress], 1u);
    EXPECT_EQ(host().frames().created(), 1) << "only one decode runs at a time, and it creates its frame buffer";
}

TEST_F(HeldDecode, WhileBeingCollectedLetsOthersBeCollected) {
    AsyncClip& async = openAsync(smallVideo());
    holdFrameZero(async);
    auto waiting = collectOnAThread(async, 0);
    EXPECT_TRUE(waitUntilLogged("REQUEST: Requesting: 0, frameTime: 0"));
    EXPECT_EQ(async.announce(timeOf(99), yuy3()), aiNoError);
    EXPECT_EQ(async.collect(timeOf(99), yuy3()).result, aiUnknownError);
    EXPECT_EQ(async.flush(), aiNoError) << "the frame that is being collected is no longer in the list";
    EXPECT_FALSE(gate().isOpen());
    gate().open();
    EXPECT_EQ(waiting.get().result, aiNoError);
}

TEST_F(HeldDecode, OfAnUnannouncedFrameLetsOthersBeCollected) {
    AsyncClip& async = openAsync(smallVideo());
    holdNextDecode();
    auto waiting = collectOnAThread(async, 0);
    EXPECT_TRUE(gate().waitForArrival());
    EXPECT_EQ(async.collect(timeOf(99), yuy3()).result, aiUnknownError);
    EXPECT_FALSE(gate().isOpen());
    gate().open();
    EXPECT_EQ(waiting.get().result, aiNoError);
}

TEST_F(HeldDecode, IsAwaitedAndItsFrameDisposedByAFlush) {
    AsyncClip& async = openAsync(smallVideo());
    holdFrameZero(async);
    async.announce(timeOf(1), yuy3());
    struct Seen {
        csSDK_int32 result;
        bool wasOpen;
        int alive;
    };
    auto flushing = std::async(std::launch::async, [&] {
        const csSDK_int32 result = async.flush();
        return Seen{result, gate().isOpen(), host().frames().alive()};
    });
    EXPECT_TRUE(waitUntilLogged("[OnFlush]"));
    giveTimeToReturn();
    EXPECT_EQ(logged("    OnFlush: [aiNoError] (0)"), 0);
    gate().open();
    const Seen seen = flushing.get();
    EXPECT_EQ(seen.result, aiNoError);
    EXPECT_TRUE(seen.wasOpen);
    EXPECT_EQ(seen.alive, 0);
    EXPECT_EQ(host().frames().created(), 2);
}

TEST_F(HeldDecode, IsAwaitedByAFlushInTheHostsFrameCreationToo) {
    AsyncClip& async = openAsync(smallVideo());
    holdHostCall(hostkit::HostCall::CreatePPix);
    async.announce(timeOf(1), yuy3());
    EXPECT_TRUE(gate().waitForArrival());
    auto flushing = std::async(std::launch::async, [&] {
        async.flush();
        return gate().isOpen();
    });
    giveTimeToReturn();
    gate().open();
    EXPECT_TRUE(flushing.get());
    EXPECT_EQ(host().frames().alive(), 0);
}

TEST_F(HeldDecode, IsAwaitedAndItsFrameDisposedByTheClose) {
    AsyncClip& async = openAsync(smallVideo());
    holdFrameZero(async);
    async.announce(timeOf(1), yuy3());
    auto closing = std::async(std::launch::async, [&] {
        const csSDK_int32 result = async.close();
        EXPECT_TRUE(gate().isOpen());
        return result;
    });
    EXPECT_TRUE(waitUntilLogged("QuorvaneAsyncImporter::~QuorvaneAsyncImporter()"));
    giveTimeToReturn();
    EXPECT_EQ(logged("VideoInfo::~VideoInfo()"), 0);
    gate().open();
    EXPECT_EQ(closing.get(), aiNoError);
    EXPECT_EQ(host().frames().created(), 2);
    EXPECT_EQ(host().frames().alive(), 0);
}

TEST_F(HeldDecode, IsDeliveredIfTheCloseComesDuringItsCollection) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    AsyncClip& async = openAsync(clip);
    holdNextDecode();
    auto collecting = collectOnAThread(async, 0);
    EXPECT_TRUE(gate().waitForArrival());
    std::promise<void> isClosing;
    auto closing = std::async(std::launch::async, [&] {
        isClosing.set_value();
        return async.close();
    });
    isClosing.get_future().wait();
    giveTimeToReturn();
    gate().open();
    const auto answer = collecting.get();
    EXPECT_EQ(answer.result, aiNoError);
    EXPECT_EQ(closing.get(), aiNoError);
    EXPECT_EQ(bytesOf(answer.frame), bytesOf(clip.frame(0, yuy3()).frame));
    const Lines lines = messages();
    EXPECT_LT(std::find(lines.begin(), lines.end(), "    OnGetFrame: [aiNoError] (0), [imNoErr] (0)"),
              std::find(lines.begin(), lines.end(), "QuorvaneAsyncImporter::~QuorvaneAsyncImporter()"));
}

TEST_F(HeldDecode, OfOneClipDoesNotBlockAnother) {
    hostkit::ClipSession& other = openClip(smallVideo());
    AsyncClip& otherAsync = openAsync(other);
    AsyncClip& async = openAsync(smallVideo());
    holdFrameZero(async);
    expectFrame(otherAsync, other, 3);
    EXPECT_EQ(otherAsync.flush(), aiNoError);
    EXPECT_EQ(otherAsync.close(), aiNoError);
    EXPECT_FALSE(gate().isOpen());
}

TEST_F(HeldDecode, DoesNotBlockTheSynchronousImporter) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    AsyncClip& async = openAsync(clip);
    holdFrameZero(async);
    EXPECT_EQ(clip.frame(timeOf(1), yuy3()).result, imNoErr);
    EXPECT_EQ(clip.quiet(), imNoErr);
    EXPECT_EQ(clip.close(), imNoErr);
    EXPECT_FALSE(gate().isOpen());
}

}  // namespace
