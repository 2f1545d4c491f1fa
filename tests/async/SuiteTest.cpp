// Hosts that refuse a suite, once or always, whenever the asynchronous importer asks for one.
#include "async/support/AsyncTest.h"

#include <string>
#include <utility>
#include <vector>

namespace {

constexpr csSDK_int32 kRefused = 1400;

// The order in which an importer asks for its suites.
enum Request { kPPixCreator = 1, kPPixCache, kPPix, kTime, kImageProcessing, kAudio, kRequestCount = kAudio };

class Suites : public AsyncTest {
protected:
    void SetUp() override {
        AsyncTest::SetUp();
        m_clip = &openClip(smallVideo());
    }

    hostkit::ClipSession& clip() { return *m_clip; }

    void refuse(int nth, int times) {
        host().faults().fail(hostkit::HostCall::AcquireSuite, kRefused, nth, times);
    }

    int asked() { return host().calls().count(hostkit::HostCall::AcquireSuite); }

    // Creates an importer while the host refuses this request.
    AsyncClip& openRefusing(Request request) {
        refuse(request, 1);
        return openAsync(clip());
    }

private:
    hostkit::ClipSession* m_clip = nullptr;
};

TEST_F(Suites, RefusedOnceAtTheCreationAreAcquiredLater) {
    for (int request = kPPixCreator; request <= kRequestCount; ++request) {
        SCOPED_TRACE("request " + std::to_string(request));
        AsyncClip& async = openRefusing(static_cast<Request>(request));
        expectFrame(async, clip(), 2);
        async.close();
    }
}

TEST_F(Suites, ThatNoFrameNeedsAreNotRequestedAgain) {
    for (const Request request : {kPPixCache, kImageProcessing, kAudio}) {
        AsyncClip& async = openRefusing(request);
        const int before = asked();
        expectFrame(async, clip(), 2);
        EXPECT_EQ(asked(), before);
    }
}

TEST_F(Suites, AreFirstRequestedOnAWorkerThread) {
    AsyncClip& async = openRefusing(kPPixCreator);
    const LoggedLines lines = linesOf([&] { expectFrame(async, clip(), 2); });
    ASSERT_EQ(lines.others.size(), 1u);
    EXPECT_EQ(lines.others[0].back(), "Acquiring suite: r: 0, v: 1, n: 'Premiere PPix Creator Suite', ptr: <pointer>");
}

TEST_F(Suites, AreRequestedOnceBySeveralWorkers) {
    AsyncClip& async = openRefusing(kPPixCreator);
    const int before = asked();
    for (int frame = 0; frame < 6; ++frame) {
        async.announce(timeOf(frame), yuy3());
    }
    for (int frame = 0; frame < 6; ++frame) {
        EXPECT_EQ(async.collect(timeOf(frame), yuy3()).result, aiNoError);
    }
    EXPECT_EQ(asked(), before + 1);
}

TEST_F(Suites, RefusedOnceOnAWorkerThreadFailOneCollection) {
    AsyncClip& async = openRefusing(kPPixCreator);
    refuse(1, 1);
    EXPECT_EQ(async.announce(timeOf(2), yuy3()), aiNoError);
    EXPECT_EQ(async.collect(timeOf(2), yuy3()).result, kExceptionResult);
    EXPECT_EQ(logged("xAsyncImportEntry: FATAL: Unhandled exception during aiGetFrame (3): Could not acquire suite: "
                     "'Premiere PPix Creator Suite', ver: 1"),
              1);
    expectFrame(async, clip(), 2);
}

TEST_F(Suites, RefusedAlwaysOnWorkerThreadsFailEachCollection) {
    AsyncClip& async = openRefusing(kPPixCreator);
    refuse(1, hostkit::FaultPlan::kForEver);
    for (int frame = 0; frame < 6; ++frame) {
        EXPECT_EQ(async.announce(timeOf(frame), yuy3()), aiNoError);
    }
    for (int frame = 0; frame < 6; ++frame) {
        EXPECT_EQ(async.collect(timeOf(frame), yuy3()).result, kExceptionResult);
    }
    host().faults().clear();
    expectFrame(async, clip(), 2);
}

TEST_F(Suites, ForDisposalFailTheAnnouncementWhenRefused) {
    AsyncClip& async = openRefusing(kPPix);
    refuse(1, 1);
    EXPECT_EQ(async.announce(timeOf(2), yuy3()), kExceptionResult);
    EXPECT_EQ(logged("xAsyncImportEntry: FATAL: Unhandled exception during aiInitiateAsyncRead (0): Could not acquire "
                     "suite: 'Premiere PPix Suite', ver: 1"),
              1);
    expectFrame(async, clip(), 2);
}

TEST_F(Suites, ForDisposalFailAnUnannouncedCollection) {
    AsyncClip& async = openRefusing(kPPix);
    refuse(1, 1);
    EXPECT_EQ(async.collect(timeOf(2), yuy3()).result, kExceptionResult);
    EXPECT_EQ(logged("xAsyncImportEntry: FATAL: Unhandled exception during aiGetFrame (3): Could not acquire suite: "
                     "'Premiere PPix Suite', ver: 1"),
              1);
    expectFrame(async, clip(), 2);
}

TEST_F(Suites, ForTimeRefusedAlwaysPreventAnImporter) {
    const StandinCounters before = codec();
    const int held = host().suitesHeld();
    refuse(1, hostkit::FaultPlan::kForEver);
    const auto created = create(clip().privateData());
    host().faults().clear();
    EXPECT_EQ(created.result, kExceptionResult);
    EXPECT_EQ(created.written, std::vector<hostkit::ByteRange>{});
    EXPECT_EQ(logged("FATAL: Unhandled exception during [imCreateAsyncImporter] (46): Could not acquire suite: "
                     "'Premiere Time Suite', ver: 1"),
              1);
    EXPECT_EQ(logged("QuorvaneAsyncImporter::~QuorvaneAsyncImporter()"), 1);
    EXPECT_EQ(codec().openInstances, before.openInstances);
    EXPECT_EQ(codec().outstandingInits, before.outstandingInits);
    EXPECT_EQ(host().suitesHeld(), held);
    expectFrame(openAsync(clip()), clip(), 2);
}

TEST_F(Suites, AreReleasedAtTheCloseEvenIfTheHostFails) {
    AsyncClip& async = openAsync(clip());
    host().faults().throwFrom(hostkit::HostCall::ReleaseSuite, "not now");
    const int before = host().calls().count(hostkit::HostCall::ReleaseSuite);
    EXPECT_EQ(async.close(), aiNoError);
    EXPECT_EQ(host().calls().count(hostkit::HostCall::ReleaseSuite), before + 6);
    EXPECT_EQ(logged("ERROR: ReleaseSuite() failed: not now"), 1);
    // Releases the suite whose release the host had refused.
    EXPECT_EQ(host().basicSuite()->ReleaseSuite(kPrSDKAudioSuite, kPrSDKAudioSuiteVersion), kSPNoError);
}

}  // namespace
