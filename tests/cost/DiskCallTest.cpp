// Disk calls of requests: a seek and a read for each chunk, and nothing else.
#include "CostTest.h"

#include "hostkit/watch/DiskFaults.h"

using hostkit::DiskCall;

namespace {

struct DiskCalls {
    int opens = 0;
    int sizes = 0;
    int seeks = 0;
    int reads = 0;

    friend bool operator==(const DiskCalls&, const DiskCalls&) = default;
};

void PrintTo(const DiskCalls& calls, std::ostream* out) {
    *out << calls.opens << " opens, " << calls.sizes << " sizes, " << calls.seeks << " seeks, " << calls.reads
         << " reads";
}

class DiskRequests : public CostTest {
protected:
    DiskRequests() : m_disk(plugin().library()) {}

    template <class Action>
    DiskCalls of(Action action) {
        m_disk.clear();
        action();
        return {m_disk.calls(DiskCall::Open), m_disk.calls(DiskCall::Size), m_disk.calls(DiskCall::Seek),
                m_disk.calls(DiskCall::Read)};
    }

    DiskCalls ofSound(PrAudioSample position, csSDK_uint32 frames) {
        MeasuredClip& clip = open();
        return of([&] { clip.getSound(position, frames); });
    }

private:
    hostkit::DiskFaults m_disk;
};

constexpr DiskCalls kOneChunk = {.seeks = 1, .reads = 1};

}  // namespace

TEST_F(DiskRequests, AreASeekAndAReadForAFrame) {
    MeasuredClip& clip = open();
    EXPECT_EQ(of([&] { clip.getFrame(7); }), kOneChunk);
}

TEST_F(DiskRequests, AreTheSameForADroppedFrame) {
    aviwriter::SampleOptions options = usualClip();
    options.dropped = {3, 4, 5};
    MeasuredClip& clip = open(options);
    EXPECT_EQ(of([&] { clip.getFrame(5); }), kOneChunk);
}

TEST_F(DiskRequests, AreASeekAndAReadForAnAnnouncedFrame) {
    MeasuredClip& clip = open();
    clip.openAsync();
    EXPECT_EQ(of([&] {
                  clip.announce(7);
                  clip.collect(7);
              }),
              kOneChunk);
}

TEST_F(DiskRequests, AreASeekAndAReadForSoundWithinAChunk) {
    EXPECT_EQ(ofSound(kChunkFrames + 100, 200), kOneChunk);
}

TEST_F(DiskRequests, AreASeekAndAReadForEachChunkOfSound) {
    EXPECT_EQ(ofSound(kChunkFrames - 100, kChunkFrames + 200), (DiskCalls{.seeks = 3, .reads = 3}));
}

TEST_F(DiskRequests, AreTheSameForSoundAcrossTheEnd) {
    EXPECT_EQ(ofSound(9 * kChunkFrames + 100, 2 * kChunkFrames), kOneChunk);
}

TEST_F(DiskRequests, AreNoneForSoundPastTheEnd) { EXPECT_EQ(ofSound(10 * kChunkFrames, 200), DiskCalls{}); }
