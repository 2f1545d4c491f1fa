// Announcing, collecting, flushing: the result of each call.
#include "async/support/AsyncTest.h"

namespace {

class Protocol : public AsyncTest {
protected:
    void SetUp() override {
        AsyncTest::SetUp();
        m_clip = &openClip(smallVideo(13));
        m_async = &openAsync(*m_clip);
    }

    AsyncClip& async() { return *m_async; }

    std::vector<std::uint8_t> reference(int frame, const std::vector<imFrameFormat>& formats = yuy3()) {
        const auto answer = m_clip->frame(timeOf(frame), formats);
        EXPECT_EQ(answer.result, imNoErr);
        return bytesOf(answer.frame);
    }

    // Collects a frame in the usual format and compares it.
    void expectCollected(int frame) {
        const auto answer = async().collect(timeOf(frame), yuy3());
        EXPECT_EQ(answer.result, aiNoError) << "frame " << frame;
        EXPECT_EQ(bytesOf(answer.frame), reference(frame)) << "frame " << frame;
    }

    std::ptrdiff_t notFound(int frame) {
        return logged("REQUEST: ERROR: Frame not found: " + std::to_string(frame) +
                      ", frameTime: " + std::to_string(timeOf(frame)));
    }

private:
    hostkit::ClipSession* m_clip = nullptr;
    AsyncClip* m_async = nullptr;
};

TEST_F(Protocol, AnAnnouncedFrameIsCollected) {
    EXPECT_EQ(async().announce(timeOf(4), yuy3()), aiNoError);
    expectCollected(4);
    EXPECT_EQ(notFound(4), 0);
}

TEST_F(Protocol, CollectingOutOfOrderLeavesTheOthersPending) {
    for (const int frame : {10, 11, 12}) {
        EXPECT_EQ(async().announce(timeOf(frame), yuy3()), aiNoError);
    }
    expectCollected(11);
    expectCollected(10);
    expectCollected(12);
    EXPECT_EQ(notFound(10) + notFound(11) + notFound(12), 0);
}

TEST_F(Protocol, ACollectedFrameIsNoLongerPending) {
    async().announce(timeOf(11), yuy3());
    expectCollected(11);
    expectCollected(11);
    EXPECT_EQ(notFound(11), 1);
}

TEST_F(Protocol, AFrameAnnouncedTwiceIsDeliveredTwice) {
    async().announce(timeOf(5), yuy3());
    async().announce(timeOf(5), yuy3());
    expectCollected(5);
    expectCollected(5);
    EXPECT_EQ(notFound(5), 0);
    expectCollected(5);
    EXPECT_EQ(notFound(5), 1);
}

TEST_F(Protocol, TheOlderOfTwoAnnouncementsIsCollectedFirst) {
    async().announce(timeOf(5), uyv7());
    async().announce(timeOf(5), yuy3());
    const auto first = async().collect(timeOf(5), yuy3());
    const auto second = async().collect(timeOf(5), yuy3());
    EXPECT_EQ(first.frame.view()->format, PrPixelFormat_UYVY_422_8u_709);
    EXPECT_EQ(second.frame.view()->format, PrPixelFormat_YUYV_422_8u_709);
}

TEST_F(Protocol, AFlushDropsASecondAnnouncementToo) {
    async().announce(timeOf(5), yuy3());
    async().announce(timeOf(5), yuy3());
    expectCollected(5);
    EXPECT_EQ(async().flush(), aiNoError);
    expectCollected(5);
    EXPECT_EQ(notFound(5), 1);
}

TEST_F(Protocol, AFrameThatWasNeverAnnouncedIsDelivered) {
    expectCollected(7);
    EXPECT_EQ(notFound(7), 1);
}

TEST_F(Protocol, AnyTimeWithinAFrameFindsItsAnnouncement) {
    async().announce(timeOf(3) + 17, yuy3());
    const auto answer = async().collect(timeOf(4) - 1, yuy3());
    EXPECT_EQ(answer.result, aiNoError);
    EXPECT_EQ(bytesOf(answer.frame), reference(3));
    EXPECT_EQ(logged("REQUEST: Requesting: 3, frameTime: 40642559999"), 1);
}

TEST_F(Protocol, TheAnnouncedFormatCountsNotTheRequestedOne) {
    async().announce(timeOf(2), uyv7());
    const auto answer = async().collect(timeOf(2), yuy3());
    EXPECT_EQ(answer.frame.view()->format, PrPixelFormat_UYVY_422_8u_709);
    EXPECT_EQ(logged("Decoded 2: PrPixelFormat_UYVY_422_8u_709"), 1);
}

TEST_F(Protocol, OnlyTheFirstOfSeveralFormatsCounts) {
    async().announce(timeOf(2), {uyv7()[0], yuy3()[0], {7, 7, PrPixelFormat_BGRA_4444_8u}});
    const auto answer = async().collect(timeOf(2), {});
    EXPECT_EQ(answer.result, aiNoError);
    EXPECT_EQ(answer.frame.view()->format, PrPixelFormat_UYVY_422_8u_709);
}

TEST_F(Protocol, ATimeAfterTheLastFrameFailsAtItsCollection) {
    EXPECT_EQ(async().announce(timeOf(13), yuy3()), aiNoError);
    EXPECT_EQ(logged("REQUEST: Adding: 13, frameTime: 132088320000"), 1);
    EXPECT_EQ(async().collect(timeOf(13), yuy3()).result, aiUnknownError);
    EXPECT_EQ(logged("    OnGetFrame: [aiUnknownError] (2), [imFrameNotFound] (28)"), 1);
}

TEST_F(Protocol, TheLastFrameIsWithinTheClip) {
    async().announce(timeOf(13) - 1, yuy3());
    expectCollected(12);
}

TEST_F(Protocol, ATimeBeforeTheClipFailsAtItsCollection) {
    EXPECT_EQ(async().announce(-timeOf(1), yuy3()), aiNoError);
    EXPECT_EQ(logged("REQUEST: Adding: -1, frameTime: -10160640000"), 1);
    EXPECT_EQ(async().collect(-timeOf(1), yuy3()).result, aiUnknownError);
    EXPECT_EQ(logged("frameIndex:  4294967295 (total: 13)"), 1);
}

TEST_F(Protocol, ATimeLessThanAFrameBeforeTheClipIsTheFirstFrame) {
    EXPECT_EQ(async().announce(-timeOf(1) + 1, yuy3()), aiNoError);
    expectCollected(0);
    EXPECT_EQ(notFound(0), 0);
}

TEST_F(Protocol, AFlushWithoutAnnouncementsSucceeds) {
    EXPECT_EQ(async().flush(), aiNoError);
    EXPECT_EQ(async().flush(), aiNoError);
    EXPECT_EQ(host().frames().created(), 0);
}

TEST_F(Protocol, AFlushDisposesEveryPendingFrame) {
    for (int frame = 0; frame < 13; ++frame) {
        async().announce(timeOf(frame), yuy3());
    }
    EXPECT_EQ(async().flush(), aiNoError);
    EXPECT_EQ(host().frames().created(), 13);
    EXPECT_EQ(host().frames().alive(), 0);
    expectCollected(6);
    EXPECT_EQ(notFound(6), 1);
}

TEST_F(Protocol, ACancelledFrameStaysPending) {
    async().announce(timeOf(8), yuy3());
    hostkit::HostRecord<aiAsyncRequest> record;
    record->inPrivateData = async().privateData();
    record->inSourceRec.inPrivateData = async().privateData();
    record->inSourceRec.inFrameTime = timeOf(8);
    EXPECT_EQ(async().call(aiCancelAsyncRead, record.data()), aiUnsupported);
    expectCollected(8);
    EXPECT_EQ(notFound(8), 0);
}

TEST_F(Protocol, AWaitForAnAnnouncementIsNotSupported) {
    hostkit::HostRecord<aiAsyncRequest> record;
    record->inPrivateData = async().privateData();
    EXPECT_EQ(async().call(aiContinueToWaitForAsyncIO, record.data()), aiUnsupported);
}

TEST_F(Protocol, EfficientRenderTimesAreNotSupported) {
    hostkit::HostRecord<aiSelectEfficientRenderTimeRec> record;
    record->inPrivateData = async().privateData();
    EXPECT_EQ(async().call(aiSelectEfficientRenderTime, record.data()), aiUnsupported);
}

TEST_F(Protocol, UnknownSelectorsAreUnsupportedAndTouchNothing) {
    for (const csSDK_int32 selector : {-1, 7, 8, 99, 0x7FFFFFFF}) {
        EXPECT_EQ(async().call(selector, nullptr), aiUnsupported) << selector;
    }
}

TEST_F(Protocol, AnUnsupportedSelectorLogsNothing) {
    EXPECT_EQ(messagesOf([&] {
                  for (const csSDK_int32 selector : {1, 5, 6, 7}) {
                      async().call(selector, nullptr);
                  }
              }),
              Lines{});
}

TEST_F(Protocol, ClosingNoImporterIsNoError) {
    EXPECT_EQ(messagesOf([&] { EXPECT_EQ(async().call(aiClose, nullptr), aiNoError); }), Lines{});
    expectCollected(1);
}

TEST_F(Protocol, CallsWithoutAnImporterAreRefused) {
    hostkit::HostRecord<aiAsyncRequest> request;
    hostkit::HostRecord<imSourceVideoRec> record;
    PPixHand delivered = nullptr;
    record->outFrame = &delivered;
    EXPECT_EQ(messagesOf([&] {
                  EXPECT_EQ(async().call(aiInitiateAsyncRead, request.data()), aiUnknownError);
                  EXPECT_EQ(async().call(aiGetFrame, record.data()), aiUnknownError);
                  EXPECT_EQ(async().call(aiFlush, nullptr), aiUnknownError);
              }),
              Lines(3, "ERROR: the host gave no importer"));
    EXPECT_EQ(delivered, nullptr);
}

TEST_F(Protocol, ACollectionWithoutOutFrameDisposesTheFrame) {
    async().announce(timeOf(1), yuy3());
    hostkit::HostRecord<imSourceVideoRec> record;
    record->inPrivateData = async().privateData();
    record->inFrameTime = timeOf(1);
    EXPECT_EQ(async().call(aiGetFrame, record.data()), aiUnknownError);
    EXPECT_EQ(logged("ERROR: the host gave no outFrame"), 1);
    EXPECT_EQ(host().frames().created(), 1);
    EXPECT_EQ(host().frames().alive(), 0);
    expectCollected(1);
}

TEST_F(Protocol, TheEmbeddedRecordsPrivateDataIsIgnored) {
    std::vector<imFrameFormat> formats = yuy3();
    hostkit::HostRecord<aiAsyncRequest> request;
    request->inPrivateData = async().privateData();
    request->inSourceRec.inFrameTime = timeOf(9);
    request->inSourceRec.inFrameFormats = formats.data();
    request->inSourceRec.inNumFrameFormats = 1;
    EXPECT_EQ(async().call(aiInitiateAsyncRead, request.data()), aiNoError);
    expectCollected(9);
    EXPECT_EQ(notFound(9), 0);
}

TEST_F(Protocol, AFrameBufferBelongsToTheHostEvenAfterTheClose) {
    async().announce(timeOf(2), yuy3());
    const auto answer = async().collect(timeOf(2), yuy3());
    async().close();
    EXPECT_EQ(host().frames().alive(), 1);
    EXPECT_EQ(bytesOf(answer.frame), reference(2));
}

}  // namespace
