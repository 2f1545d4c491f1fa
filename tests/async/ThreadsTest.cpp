// Several threads of the host at the same time, on one importer and on several.
#include "async/support/AsyncTest.h"

#include <future>
#include <random>

namespace {

constexpr unsigned kThreads = 4;
constexpr int kThreadFrames = 12;
constexpr int kRounds = 60;

class Threads : public AsyncTest {
protected:
    using AsyncTest::AsyncTest;

    std::vector<std::vector<std::uint8_t>> referencesOf(hostkit::ClipSession& clip) {
        std::vector<std::vector<std::uint8_t>> references;
        for (int frame = 0; frame < kThreadFrames; ++frame) {
            references.push_back(bytesOf(clip.frame(timeOf(frame), yuy3()).frame));
        }
        return references;
    }

    // A thread's work: announces a few random frames and collects them in another order. Returns the number of frames
    // that were not as expected.
    static int announceAndCollect(AsyncClip& async, const std::vector<std::vector<std::uint8_t>>& references,
                                  unsigned seed) {
        std::mt19937 random(seed);
        int wrong = 0;
        for (int round = 0; round < kRounds; ++round) {
            const std::size_t first = random() % kThreadFrames;
            const std::size_t second = random() % kThreadFrames;
            wrong += async.announce(timeOf(static_cast<int>(first)), yuy3()) != aiNoError;
            wrong += async.announce(timeOf(static_cast<int>(second)), yuy3()) != aiNoError;
            for (const std::size_t frame : {second, first}) {
                const auto answer = async.collect(timeOf(static_cast<int>(frame)), yuy3());
                wrong += answer.result != aiNoError || bytesOf(answer.frame) != references[frame];
            }
        }
        return wrong;
    }
};

TEST_F(Threads, ShareOneImporter) {
    hostkit::ClipSession& clip = openClip(smallVideo(kThreadFrames));
    const auto references = referencesOf(clip);
    AsyncClip& async = openAsync(clip);
    std::vector<std::future<int>> threads;
    for (unsigned seed = 1; seed <= kThreads; ++seed) {
        threads.push_back(std::async(std::launch::async,
                                     [&, seed] { return announceAndCollect(async, references, seed); }));
    }
    for (auto& thread : threads) {
        EXPECT_EQ(thread.get(), 0);
    }
    EXPECT_EQ(host().frames().created(), kThreadFrames + static_cast<int>(kThreads) * kRounds * 2);
    EXPECT_EQ(host().frames().alive(), 0);
}

TEST_F(Threads, GetTheirFramesWhileAnotherOneFlushes) {
    hostkit::ClipSession& clip = openClip(smallVideo(kThreadFrames));
    const auto references = referencesOf(clip);
    AsyncClip& async = openAsync(clip);
    std::vector<std::future<int>> threads;
    for (unsigned seed = 11; seed < 11 + kThreads - 1; ++seed) {
        threads.push_back(std::async(std::launch::async,
                                     [&, seed] { return announceAndCollect(async, references, seed); }));
    }
    for (int i = 0; i < kRounds; ++i) {
        EXPECT_EQ(async.flush(), aiNoError);
        EXPECT_EQ(async.announce(timeOf(i % kThreadFrames), yuy3()), aiNoError);
    }
    for (auto& thread : threads) {
        EXPECT_EQ(thread.get(), 0);
    }
    EXPECT_EQ(async.flush(), aiNoError);
    EXPECT_EQ(host().frames().alive(), 0);
}

TEST_F(Threads, WorkOnTwoFilesAtOnce) {
    aviwriter::SampleOptions deeper = smallVideo(kThreadFrames);
    deeper.type = 108;
    hostkit::ClipSession& clip = openClip(smallVideo(kThreadFrames));
    hostkit::ClipSession& other = openClip(deeper);
    const auto references = referencesOf(clip);
    const auto otherReferences = referencesOf(other);
    AsyncClip& async = openAsync(clip);
    AsyncClip& otherAsync = openAsync(other);
    auto thread = std::async(std::launch::async, [&] { return announceAndCollect(async, references, 21); });
    EXPECT_EQ(announceAndCollect(otherAsync, otherReferences, 22), 0);
    EXPECT_EQ(thread.get(), 0);
}

// The editor may draw a synchronous frame while asynchronous ones are decoded.
TEST_F(Threads, UseBothImportersOfAFileAtOnce) {
    hostkit::ClipSession& clip = openClip(smallVideo(kThreadFrames));
    const auto references = referencesOf(clip);
    AsyncClip& async = openAsync(clip);
    auto thread = std::async(std::launch::async, [&] { return announceAndCollect(async, references, 31); });
    for (int i = 0; i < 2 * kRounds; ++i) {
        const int frame = i * 5 % kThreadFrames;
        const auto answer = clip.frame(timeOf(frame), yuy3());
        EXPECT_EQ(bytesOf(answer.frame), references[static_cast<std::size_t>(frame)]);
        if (i % 10 == 9) {
            EXPECT_EQ(clip.quiet(), imNoErr);
            EXPECT_EQ(clip.open().result, imNoErr);
        }
    }
    EXPECT_EQ(thread.get(), 0);
}

// The editor quiets files that it does not show and opens them again, even while frames are pending.
TEST_F(Threads, ReadTwoFilesWhileTheImportersAreReopened) {
    aviwriter::SampleOptions deeper = smallVideo(kThreadFrames);
    deeper.type = 108;
    std::vector<hostkit::ClipSession*> clips = {&openClip(smallVideo(kThreadFrames)), &openClip(deeper)};
    std::vector<std::vector<std::vector<std::uint8_t>>> references;
    std::vector<AsyncClip*> asyncs;
    for (hostkit::ClipSession* clip : clips) {
        references.push_back(referencesOf(*clip));
        asyncs.push_back(&openAsync(*clip));
    }
    ASSERT_NE(references[0], references[1]);
    std::vector<std::future<int>> threads;
    for (unsigned i = 0; i < kThreads; ++i) {
        threads.push_back(std::async(std::launch::async, [&, i] {
            return announceAndCollect(*asyncs[i % 2], references[i % 2], 41 + i);
        }));
    }
    for (int i = 0; i < kRounds; ++i) {
        const std::size_t file = static_cast<std::size_t>(i) % 2;
        EXPECT_EQ(clips[file]->quiet(), imNoErr);
        EXPECT_EQ(clips[file]->open().result, imNoErr);
        const int frame = i * 5 % kThreadFrames;
        EXPECT_EQ(bytesOf(clips[file]->frame(timeOf(frame), yuy3()).frame),
                  references[file][static_cast<std::size_t>(frame)]);
    }
    for (auto& thread : threads) {
        EXPECT_EQ(thread.get(), 0);
    }
    EXPECT_EQ(host().frames().alive(), 0);
}

TEST_F(Threads, OpenUseAndCloseImportersAtOnce) {
    std::vector<hostkit::ClipSession*> clips;
    std::vector<std::vector<std::uint8_t>> expected;
    for (unsigned i = 0; i < kThreads; ++i) {
        clips.push_back(&openClip(smallVideo(kThreadFrames)));
        expected.push_back(bytesOf(clips.back()->frame(timeOf(2), yuy3()).frame));
    }
    std::vector<std::future<int>> threads;
    for (unsigned i = 0; i < kThreads; ++i) {
        threads.push_back(std::async(std::launch::async, [&, i] {
            int wrong = 0;
            for (int round = 0; round < kRounds / 6; ++round) {
                const auto created = create(clips[i]->privateData());
                AsyncClip async(host(), *created.record);
                async.announce(timeOf(round), yuy3());
                wrong += bytesOf(async.collect(timeOf(2), yuy3()).frame) != expected[i];
            }
            return wrong;
        }));
    }
    for (auto& thread : threads) {
        EXPECT_EQ(thread.get(), 0);
    }
}

// Without a log, whose lock would serialize the tasks: then only the importer's own locking keeps two reads of one file
// from changing its position at the same time.
class ThreadsWithoutALog : public Threads {
protected:
    ThreadsWithoutALog() : Threads({}, false) {}
};

TEST_F(ThreadsWithoutALog, ReadOneFrameAtATime) {
    aviwriter::SampleOptions options = smallVideo(kThreadFrames);
    options.width = 16;
    options.height = 8;
    hostkit::ClipSession& clip = openClip(options);
    const auto references = referencesOf(clip);
    AsyncClip& async = openAsync(clip);
    int wrong = 0;
    for (int round = 0; round < 500; ++round) {
        for (int frame = 0; frame < kThreadFrames; ++frame) {
            async.announce(timeOf(frame), yuy3());
        }
        for (int frame = 0; frame < kThreadFrames; ++frame) {
            wrong += bytesOf(async.collect(timeOf(frame), yuy3()).frame) != references[static_cast<std::size_t>(frame)];
        }
    }
    EXPECT_EQ(wrong, 0);
}

}  // namespace
