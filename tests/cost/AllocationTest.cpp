// What requests take of the heap: nothing, once the first has been served.
#include "CostTest.h"
#include "HeapWatch.h"

using aviwriter::SampleFormat;

namespace {

class Allocation : public CostTest {
protected:
    // The codec's own needs are not the plug-in's.
    Allocation() : m_watch(plugin().library()) { plugin().spy().decodes().leaveOut(true); }

    template <class Action>
    std::size_t allocationsOf(Action action) {
        HeapWatch::clear();
        action();
        return HeapWatch::allocations();
    }

    std::size_t allocationsOfSound(SampleFormat format, std::uint16_t channels) {
        MeasuredClip& clip = open(clipWith(format, channels));
        clip.getSound(0, 3 * kChunkFrames);
        return allocationsOf([&] { clip.getSound(kChunkFrames / 2, 3 * kChunkFrames); });
    }

private:
    HeapWatch m_watch;
};

}  // namespace

// What all others rest on: that allocations are seen at all.
TEST_F(Allocation, OfAnAsynchronousImporterIsSeen) {
    MeasuredClip& clip = open();
    EXPECT_GT(allocationsOf([&] { clip.openAsync(); }), 0u);
}

TEST_F(Allocation, OfTheFirstFrameIsSeen) {
    MeasuredClip& clip = open();
    EXPECT_GT(allocationsOf([&] { clip.getFrame(0); }), 0u);
}

TEST_F(Allocation, IsNotNeededForASecondFrame) {
    MeasuredClip& clip = open();
    clip.getFrame(0);
    EXPECT_EQ(allocationsOf([&] { clip.getFrame(0); }), 0u);
}

TEST_F(Allocation, IsNotNeededForAnyFrameOnceTheLargestWasRead) {
    MeasuredClip& clip = open();
    for (csSDK_int64 frame = 0; frame < clip.frameCount(); ++frame) {
        clip.getFrame(frame);
    }
    EXPECT_EQ(allocationsOf([&] {
                  for (csSDK_int64 frame = 0; frame < clip.frameCount(); ++frame) {
                      clip.getFrame(frame);
                  }
              }),
              0u);
}

TEST_F(Allocation, IsNotNeededForADroppedFrame) {
    aviwriter::SampleOptions options = usualClip();
    options.dropped = {5};
    MeasuredClip& clip = open(options);
    clip.getFrame(4);
    EXPECT_EQ(allocationsOf([&] { clip.getFrame(5); }), 0u);
}

TEST_F(Allocation, IsNotNeededForFloatSound) { EXPECT_EQ(allocationsOfSound(SampleFormat::float32, 8), 0u); }

TEST_F(Allocation, IsNotNeededForEightBitSound) { EXPECT_EQ(allocationsOfSound(SampleFormat::pcm8, 2), 0u); }

TEST_F(Allocation, IsNotNeededForSixteenBitSound) { EXPECT_EQ(allocationsOfSound(SampleFormat::pcm16, 2), 0u); }

TEST_F(Allocation, IsNotNeededForTwentyFourBitSound) { EXPECT_EQ(allocationsOfSound(SampleFormat::pcm24, 2), 0u); }

TEST_F(Allocation, ToCollectAnAnnouncedFrameIsOnlyTheRuntimesForTheWait) {
    MeasuredClip& clip = open();
    clip.openAsync();
    clip.collect(0);
    clip.announce(0);
    HeapWatch::clear();
    clip.collect(0);
    EXPECT_LE(HeapWatch::allocationsOfThisThread(), HeapWatch::kMostForAWait);
}

// An announcement starts a thread, which takes what the system's threads take: little beside a frame.
TEST_F(Allocation, OfAnAnnouncedFrameIsNotForItsBytes) {
    MeasuredClip& clip = open();
    clip.openAsync();
    clip.collect(0);
    plugin().spy().clear();
    HeapWatch::clear();
    clip.announce(0);
    clip.collect(0);
    EXPECT_GT(plugin().spy().reads().lastSize(), 2000u);
    EXPECT_LT(HeapWatch::largest(), 1000u);
}

// Hundreds of clips are open in a project: what one leaves serves the next. An asynchronous importer is as good as one.
TEST_F(Allocation, OfAnImportersFirstFrameIsNotForItsBytesWhenAnotherLeftRoom) {
    MeasuredClip& clip = open();
    clip.openAsync();
    clip.getFrame(0);
    plugin().spy().clear();
    HeapWatch::clear();
    clip.collect(0);
    EXPECT_GT(plugin().spy().reads().lastSize(), 2000u);
    EXPECT_LT(HeapWatch::largest(), plugin().spy().reads().lastSize());
}

TEST_F(Allocation, IsNeededAgainWhenAFlushHasGivenTheMemoryBack) {
    MeasuredClip& clip = open();
    clip.openAsync();
    clip.collect(0);
    clip.flush();
    plugin().spy().clear();
    HeapWatch::clear();
    clip.collect(0);
    EXPECT_EQ(HeapWatch::largest(), plugin().spy().reads().lastSize());
}

// An importer that is put to rest gives back what it and others left.
TEST_F(Allocation, IsNeededAgainWhenAQuietClipHasGivenTheMemoryBack) {
    MeasuredClip& clip = open();
    clip.getFrame(0);
    clip.quiet();
    clip.openAsync();
    plugin().spy().clear();
    HeapWatch::clear();
    clip.collect(0);
    EXPECT_EQ(HeapWatch::largest(), plugin().spy().reads().lastSize());
}
