// The lifetimes of an importer and its asynchronous importer are independent.
#include "async/support/AsyncTest.h"

#include "async/support/FileUse.h"

#include <map>

namespace {

class Lifetime : public AsyncTest {
protected:
    void SetUp() override {
        AsyncTest::SetUp();
        m_path = write("clip.avi", aviwriter::sampleBytes(smallVideo()));
        m_clip = &openClip(m_path);
        for (int frame = 0; frame < 6; ++frame) {
            m_expected[frame] = bytesOf(m_clip->frame(timeOf(frame), yuy3()).frame);
        }
        m_async = &openAsync(*m_clip);
    }

    const std::filesystem::path& path() const { return m_path; }
    hostkit::ClipSession& clip() { return *m_clip; }
    AsyncClip& async() { return *m_async; }

    void expectCollected(int frame) {
        const auto answer = async().collect(timeOf(frame), yuy3());
        EXPECT_EQ(answer.result, aiNoError);
        EXPECT_EQ(bytesOf(answer.frame), m_expected[frame]) << "frame " << frame;
    }

private:
    std::filesystem::path m_path;
    hostkit::ClipSession* m_clip = nullptr;
    AsyncClip* m_async = nullptr;
    std::map<int, std::vector<std::uint8_t>> m_expected;
};

TEST_F(Lifetime, ContinuesWhileTheImporterIsQuietAndReopened) {
    async().announce(timeOf(1), yuy3());
    EXPECT_EQ(clip().quiet(), imNoErr);
    async().announce(timeOf(2), yuy3());
    expectCollected(1);
    expectCollected(2);
    EXPECT_EQ(clip().open().result, imNoErr);
    async().announce(timeOf(3), yuy3());
    expectCollected(3);
    EXPECT_EQ(clip().frame(timeOf(3), yuy3()).result, imNoErr);
}

TEST_F(Lifetime, ContinuesAfterTheImporterIsClosed) {
    async().announce(timeOf(1), yuy3());
    EXPECT_EQ(clip().close(), imNoErr);
    async().announce(timeOf(2), yuy3());
    expectCollected(2);
    expectCollected(1);
    expectCollected(5);
    EXPECT_EQ(async().flush(), aiNoError);
    EXPECT_EQ(async().close(), aiNoError);
}

TEST_F(Lifetime, EndsWithPendingFramesDisposed) {
    const int before = host().frames().alive();
    for (int frame = 0; frame < 6; ++frame) {
        async().announce(timeOf(frame), yuy3());
    }
    EXPECT_EQ(async().close(), aiNoError);
    EXPECT_EQ(host().frames().created(), 12);
    EXPECT_EQ(host().frames().alive(), before);
}

TEST_F(Lifetime, EndsBeforeTheImporterAndLeavesItUsable) {
    async().announce(timeOf(1), yuy3());
    EXPECT_EQ(async().close(), aiNoError);
    EXPECT_EQ(clip().frame(timeOf(4), yuy3()).result, imNoErr);
}

TEST_F(Lifetime, MayEndWithItsDecodeSessionRunning) {
    standin_reset();
    async().announce(timeOf(1), yuy3());
    expectCollected(1);
    EXPECT_EQ(async().close(), aiNoError);
    EXPECT_EQ(codec().calls[kStandinDecompressEnd], 0u);
    EXPECT_EQ(codec().closesWithSession, 1u);
}

TEST_F(Lifetime, BeginsItsOwnSession) {
    standin_reset();
    async().announce(timeOf(1), uyv7());
    EXPECT_EQ(async().collect(timeOf(1), uyv7()).result, aiNoError);
    EXPECT_EQ(clip().frame(timeOf(1), yuy3()).result, imNoErr);
    EXPECT_EQ(codec().calls[kStandinDecompressBegin], 1u);
    EXPECT_EQ(codec().calls[kStandinDecompressEnd], 0u) << "the importer's session was not disturbed";
}

TEST_F(Lifetime, ReadsItsFileAfterTheNameWasReused) {
    clip().close();
    std::error_code refused;
    std::filesystem::rename(path(), path().parent_path() / "elsewhere.avi", refused);
    async().announce(timeOf(4), yuy3());
    expectCollected(4);
    async().close();
    EXPECT_FALSE(isInUse(path()));
    EXPECT_FALSE(isInUse(path().parent_path() / "elsewhere.avi"));
}

TEST_F(Lifetime, OfManyImportersLeavesNothingBehind) {
    const int suites = host().suitesHeld();
    const std::uint32_t instances = codec().openInstances;
    for (int round = 0; round < 30; ++round) {
        AsyncClip& another = openAsync(clip());
        another.announce(timeOf(round % 6), yuy3());
        another.announce(timeOf(2), yuy3());
        EXPECT_EQ(another.collect(timeOf(2), yuy3()).result, aiNoError);
        EXPECT_EQ(another.close(), aiNoError);
        ASSERT_EQ(host().suitesHeld(), suites);
        ASSERT_EQ(codec().openInstances, instances);
        ASSERT_EQ(host().frames().alive(), 0);
    }
}

}  // namespace
