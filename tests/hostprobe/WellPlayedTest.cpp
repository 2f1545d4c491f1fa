// Every function of the host library's sessions, in every profile: the probe has no complaint.
#include "ProbeRun.h"

#include "hostkit/sessions/AsyncSession.h"

#include <thread>

using namespace hostkit;

namespace {

using Sentences = std::vector<std::string>;

const std::vector<imFrameFormat> kAnything = {{0, 0, PrPixelFormat_BGRA_4444_8u}};

// A host of one profile with the probe loaded, until finish().
class ProbedHost {
public:
    explicit ProbedHost(const std::string& profile)
        : m_run(expectationsFor(profile)), m_host(hostProfile(profile)),
          m_library(std::make_unique<PluginLibrary>(probePath())), m_session(m_host, m_library->entry()) {}

    Host& host() { return m_host; }
    ImporterSession& session() { return m_session; }

    // Shuts down, unloads, and expects no complaint of either side.
    void finish() {
        m_session.shutdown();
        m_library.reset();
        const ProbeReport report = m_run.report();
        EXPECT_TRUE(report.isWhole);
        EXPECT_EQ(report.complaints, Sentences{});
        EXPECT_EQ(m_host.problems(), Sentences{});
        m_calls = report.calls;
    }
    int calls() const { return m_calls; }

private:
    ProbeRun m_run;
    Host m_host;
    std::unique_ptr<PluginLibrary> m_library;
    ImporterSession m_session;
    int m_calls = 0;
};

PrTime timeOf(Host& host, csSDK_int64 frame) { return frame * (host.profile().ticksPerSecond / 25); }

void describe(ClipSession& clip) {
    const auto streams = clip.infos();
    ASSERT_EQ(streams.size(), 3u);
    EXPECT_EQ(streams.back().result, imBadStreamIndex);
    EXPECT_EQ(clip.pixelFormats(),
              (std::vector<PrPixelFormat>{PrPixelFormat_BGRA_4444_8u, PrPixelFormat_YUYV_422_8u_601,
                                          PrPixelFormat_V210_422_10u_601}));
    clip.info(0);
    EXPECT_EQ(clip.channelLayout(-1).labels[1], kPrAudioChannelLabel_FrontRight);
    for (const csSDK_int32 bytes : {0, 1, 17, 65536}) {
        EXPECT_EQ(clip.analysis(bytes).result, imNoErr);
    }
    EXPECT_EQ(clip.dataRate().samples.size(), 12u);
}

void watch(Host& host, ClipSession& clip) {
    for (const csSDK_int64 frame : {0, 11, 5}) {
        EXPECT_EQ(clip.frame(timeOf(host, frame), kAnything).result, imNoErr);
    }
    EXPECT_EQ(clip.frame(timeOf(host, 3), {}).result, imNoErr);
    EXPECT_EQ(clip.frame(timeOf(host, 3), {{50, 28, PrPixelFormat_YUYV_422_8u_601}, kAnything[0]}).result, imNoErr);
    EXPECT_EQ(clip.frame(timeOf(host, 12), kAnything).result, imFrameNotFound);
    EXPECT_EQ(clip.frame(-1, kAnything).result, imFrameNotFound);
}

void listen(ClipSession& clip) {
    EXPECT_EQ(clip.audio(0, 4096, 2).result, imNoErr);
    EXPECT_EQ(clip.audio(-1, 1, 2).result, imNoErr);
    EXPECT_EQ(clip.audio(23000, 4096, 2).result, imNoErr);
    EXPECT_EQ(clip.audio(0, 0, 2).result, imNoErr);
}

void watchAhead(ProbedHost& probed, ClipSession& clip) {
    Host& host = probed.host();
    AsyncSession async(probed.session(), clip);
    async.create();
    ASSERT_TRUE(async.isOpen());
    EXPECT_EQ(async.announce(timeOf(host, 1), kAnything).result, aiNoError);
    EXPECT_EQ(async.announce(timeOf(host, 2), kAnything).result, aiNoError);
    EXPECT_EQ(async.cancel(timeOf(host, 2), kAnything).result, aiNoError);
    EXPECT_EQ(async.get(timeOf(host, 1), kAnything).result, aiNoError);
    EXPECT_EQ(async.get(timeOf(host, 99), kAnything).result, aiFrameNotFound);
    EXPECT_EQ(async.flush(), aiNoError);
    EXPECT_EQ(async.close(), aiNoError);
    async.create();             // closed by its destructor
    EXPECT_EQ(async.announce(timeOf(host, 3), kAnything).result, aiNoError);
}

class WellPlayed : public testing::TestWithParam<std::string> {};

TEST_P(WellPlayed, AWholeLifeRaisesNoComplaint) {
    ProbedHost probed(GetParam());
    const StartAnswer started = probed.session().start();
    EXPECT_EQ(started.supports8, malSupports8);
    ASSERT_EQ(started.subTypes.size(), 1u);
    EXPECT_EQ(started.subTypes[0].blockBytes, 516);
    {
        ClipSession clip(probed.session(), "one.probe");
        EXPECT_EQ(clip.open().result, imNoErr);
        describe(clip);
        watch(probed.host(), clip);
        listen(clip);
        if (probed.host().profile().asksForAsync) {
            watchAhead(probed, clip);
        }
        clip.quiet();
        EXPECT_EQ(clip.open().result, imNoErr);
        watch(probed.host(), clip);
        clip.quiet();
        EXPECT_EQ(clip.close(), imNoErr);
    }
    probed.finish();
    EXPECT_GT(probed.calls(), 40);
}

TEST_P(WellPlayed, TwoFilesOnTwoThreadsRaiseNoComplaint) {
    ProbedHost probed(GetParam());
    probed.session().start();
    {
        ClipSession one(probed.session(), "one.probe", {.importerId = 1});
        ClipSession two(probed.session(), "two.probe", {.streamIndex = 1, .importerId = 2});
        const auto use = [&probed](ClipSession& clip) {
            clip.open();
            clip.infos();
            clip.info(0);
            watch(probed.host(), clip);
            listen(clip);
        };
        std::thread other([&] { use(two); });
        use(one);
        other.join();
    }
    probed.finish();
}

TEST(WellPlayedOnce, AsyncFramesOnThreadsOutliveTheFile) {
    ProbedHost probed("editor-11");
    probed.session().start();
    ClipSession clip(probed.session(), "one.probe");
    clip.open();
    clip.info(0);
    AsyncSession async(probed.session(), clip);
    async.create();
    clip.close();
    std::vector<std::thread> threads;
    for (csSDK_int64 first = 0; first < 3; ++first) {
        threads.emplace_back([&, first] {
            for (csSDK_int64 frame = first; frame < 12; frame += 3) {
                async.announce(timeOf(probed.host(), frame), kAnything);
                EXPECT_EQ(async.get(timeOf(probed.host(), frame), kAnything).result, aiNoError);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    async.flush();
    async.close();
    probed.finish();
    EXPECT_EQ(probed.calls(), 3 + 2 + 1 + 3 + 24 + 2 + 1);      // start, describe, close; create, frames, end
}

TEST(WellPlayedOnce, SoundIsCorrectToTheLastSample) {
    ProbedHost probed("editor-11");
    probed.session().start();
    {
        ClipSession clip(probed.session(), "one.probe");
        clip.open();
        clip.info(0);
        const AudioAnswer sound = clip.audio(1000, 100, 2);
        EXPECT_EQ(sound.channels[0].back(), static_cast<float>(1099 * 37 % 2000 - 1000) / 2000.0f);
        EXPECT_EQ(sound.channels[1].back(), static_cast<float>((1099 * 37 + 101) % 2000 - 1000) / 2000.0f);
    }
    probed.finish();
}

std::vector<std::string> profileNames() {
    std::vector<std::string> names;
    for (const HostProfile& profile : hostProfiles()) {
        names.push_back(profile.name);
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Each, WellPlayed, testing::ValuesIn(profileNames()), [](const auto& instance) {
    std::string name = instance.param;
    std::erase(name, '-');
    return name;
});

}  // namespace
