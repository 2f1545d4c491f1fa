// Exceptions: those of a decode are reported by its collection, those of a handler at once. Either way the host gets 99
// and the log the reason; nothing is held afterwards, and the importer continues to work.
#include "async/support/AsyncTest.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <new>

namespace {

constexpr char kDuringGetFrame[] = "xAsyncImportEntry: FATAL: Unhandled exception during aiGetFrame (3): ";
constexpr char kDuringAnnouncing[] = "xAsyncImportEntry: FATAL: Unhandled exception during aiInitiateAsyncRead (0): ";
constexpr char kDuringFlush[] = "xAsyncImportEntry: FATAL: Unhandled exception during aiFlush (2): ";

class Exception : public AsyncTest {
protected:
    void SetUp() override {
        AsyncTest::SetUp();
        m_clip = &openClip(smallVideo());
        m_async = &openAsync(*m_clip);
    }

    AsyncClip& async() { return *m_async; }

    // Expects the announcement to succeed and the collection to fail; afterwards nothing is pending, and the importer
    // continues to work.
    void expectAtTheCollection(const std::vector<imFrameFormat>& formats, const std::string& reason) {
        EXPECT_EQ(async().announce(timeOf(2), formats), aiNoError);
        const LoggedLines lines = linesOf([&] {
            EXPECT_EQ(async().collect(timeOf(2), formats).result, kExceptionResult);
        });
        EXPECT_EQ(lines.caller, (Lines{"----------------------", "[OnGetFrame]",
                                       "REQUEST: Requesting: 2, frameTime: 20321280000", kDuringGetFrame + reason}));
        EXPECT_EQ(host().frames().alive(), 0);
        expectUnharmed();
    }

    void expectUnharmed() {
        EXPECT_EQ(async().collect(timeOf(2), yuy3()).result, aiNoError);
        EXPECT_EQ(logged("REQUEST: ERROR: Frame not found: 2, frameTime: 20321280000"), 1) << "the request is gone";
        expectFrame(async(), *m_clip, 2);
        EXPECT_EQ(async().flush(), aiNoError);
    }

private:
    hostkit::ClipSession* m_clip = nullptr;
    AsyncClip* m_async = nullptr;
};

TEST_F(Exception, OfAnUnknownPixelFormatFailsTheCollection) {
    expectAtTheCollection(only(PrPixelFormat{0x21212121}),
                          "GetFormatInfo_by_pixelFormat(): pixel format not found: ???? [!!!!]");
}

TEST_F(Exception, OfAnUnlistedPixelFormatFailsTheCollection) {
    expectAtTheCollection(only(PrPixelFormat_BGRA_4444_32f),
                          "GetFormatInfo_by_pixelFormat(): pixel format not found: PrPixelFormat_BGRA_4444_32f "
                          "[BGra]");
}

TEST_F(Exception, OfAnUnannouncedFrameFailsTheCollectionToo) {
    EXPECT_EQ(async().collect(timeOf(2), only(PrPixelFormat{0x21212121})).result, kExceptionResult);
    EXPECT_EQ(logged(std::string(kDuringGetFrame) +
                     "GetFormatInfo_by_pixelFormat(): pixel format not found: ???? [!!!!]"),
              1);
    EXPECT_EQ(async().announce(timeOf(3), yuy3()), aiNoError);
    EXPECT_EQ(async().collect(timeOf(3), yuy3()).result, aiNoError);
}

TEST_F(Exception, OfTheHostsFrameCreationFailsTheCollection) {
    host().faults().throwFrom(hostkit::HostCall::CreatePPix, "no frames today");
    expectAtTheCollection(yuy3(), "no frames today");
}

TEST_F(Exception, AfterFrameCreationDisposesTheFrame) {
    host().faults().throwFrom(hostkit::HostCall::GetRowBytes, "no rows today");
    expectAtTheCollection(yuy3(), "no rows today");
    EXPECT_GE(host().frames().disposed(), 1);
}

TEST_F(Exception, ForLackOfMemoryFailsTheCollection) {
    // The host runs out of memory: for the plug-in this cannot be caused at a chosen place.
    host().faults().observe([isDue = std::make_shared<std::atomic<bool>>(true)](hostkit::HostCall call) {
        if (call == hostkit::HostCall::CreatePPix && isDue->exchange(false)) {
            throw std::bad_alloc();
        }
    });
    expectAtTheCollection(yuy3(), std::bad_alloc().what());
}

TEST_F(Exception, OfADroppedRequestIsForgotten) {
    async().announce(timeOf(1), only(PrPixelFormat{0x21212121}));
    host().faults().throwFrom(hostkit::HostCall::GetPixels, "no pixels today");
    async().announce(timeOf(2), yuy3());
    EXPECT_EQ(async().flush(), aiNoError);
    EXPECT_EQ(host().frames().alive(), 0);
    const Lines lines = messages();
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const std::string& line) { return line.find("FATAL") != std::string::npos; }),
              0);
    expectUnharmed();
}

TEST_F(Exception, OfAnUncollectedDecodeIsForgottenAtTheClose) {
    async().announce(timeOf(1), only(PrPixelFormat{0x21212121}));
    EXPECT_EQ(async().close(), aiNoError);
}

TEST_F(Exception, DoesNotAffectOtherPendingFrames) {
    async().announce(timeOf(1), yuy3());
    async().announce(timeOf(2), only(PrPixelFormat{0x21212121}));
    async().announce(timeOf(3), yuy3());
    EXPECT_EQ(async().collect(timeOf(2), yuy3()).result, kExceptionResult);
    EXPECT_EQ(async().collect(timeOf(3), yuy3()).result, aiNoError);
    EXPECT_EQ(async().collect(timeOf(1), yuy3()).result, aiNoError);
    EXPECT_EQ(logged("REQUEST: ERROR: Frame not found: 1, frameTime: 10160640000"), 0);
}

// A host that throws when a frame is returned to it: it leaks the frame, and the log says so.
class DisposalThatThrows : public Exception {
protected:
    void SetUp() override {
        Exception::SetUp();
        host().faults().throwFrom(hostkit::HostCall::DisposePPix, "no disposal today");
        expectProblems({"A frame (yuy3, 32 x 16) was never disposed."});
    }

    static constexpr char kLogged[] = "ERROR: Dispose() failed: no disposal today";
};

TEST_F(DisposalThatThrows, LetsAFlushSucceed) {
    async().announce(timeOf(2), yuy3());
    const LoggedLines lines = linesOf([&] { EXPECT_EQ(async().flush(), aiNoError); });
    EXPECT_EQ(lines.caller, (Lines{"----------------------", "[OnFlush]", kLogged, "    OnFlush: [aiNoError] (0)"}));
    expectUnharmed();
}

TEST_F(DisposalThatThrows, LetsACloseSucceed) {
    async().announce(timeOf(2), yuy3());
    const LoggedLines lines = linesOf([&] { EXPECT_EQ(async().close(), aiNoError); });
    ASSERT_GE(lines.caller.size(), 3u);
    EXPECT_EQ(lines.caller.at(0), "QuorvaneAsyncImporter::~QuorvaneAsyncImporter()");
    EXPECT_EQ(lines.caller.at(1), kLogged);
    EXPECT_EQ(lines.caller.at(2), "QuorvaneImporter::~QuorvaneImporter()");
}

TEST_F(DisposalThatThrows, KeepsTheResultOfAFailedCollection) {
    failCodec(kStandinDecompress);
    async().announce(timeOf(2), yuy3());
    const LoggedLines lines = linesOf([&] {
        EXPECT_EQ(async().collect(timeOf(2), yuy3()).result, aiUnknownError);
    });
    EXPECT_EQ(lines.caller, (Lines{"----------------------", "[OnGetFrame]",
                                   "REQUEST: Requesting: 2, frameTime: 20321280000",
                                   "    OnGetFrame: [aiUnknownError] (2), [imBadCompression] (8)", kLogged}));
    expectUnharmed();
}

// Stream 1 is only sound.
class WithoutVideo : public AsyncTest {
protected:
    AsyncClip& openSound() {
        aviwriter::SampleOptions options = smallVideo();
        options.audio.resize(2);
        return openAsync(openClip(write("sound.avi", aviwriter::sampleBytes(options)), 1));
    }
};

TEST_F(WithoutVideo, AnAnnouncementIsALogicError) {
    AsyncClip& async = openSound();
    const Lines expected = {"----------------------", "[OnInitiateAsyncRead]",
                            std::string(kDuringAnnouncing) + "m_videoInfo is NULL"};
    EXPECT_EQ(messagesOf([&] { EXPECT_EQ(async.announce(0, yuy3()), kExceptionResult); }), expected);
    EXPECT_EQ(messagesOf([&] { EXPECT_EQ(async.announce(0, yuy3()), kExceptionResult); }), expected)
        << "the lock is still held";
}

TEST_F(WithoutVideo, ACollectionIsALogicError) {
    AsyncClip& async = openSound();
    const Lines expected = {"----------------------", "[OnGetFrame]",
                            std::string(kDuringGetFrame) + "m_videoInfo is NULL"};
    EXPECT_EQ(messagesOf([&] { EXPECT_EQ(async.collect(0, yuy3()).result, kExceptionResult); }), expected);
    EXPECT_EQ(messagesOf([&] { EXPECT_EQ(async.collect(0, yuy3()).result, kExceptionResult); }), expected);
}

TEST_F(WithoutVideo, AFlushIsALogicError) {
    AsyncClip& async = openSound();
    const Lines expected = {"----------------------", "[OnFlush]", std::string(kDuringFlush) + "m_videoInfo is NULL"};
    EXPECT_EQ(messagesOf([&] { EXPECT_EQ(async.flush(), kExceptionResult); }), expected);
    EXPECT_EQ(messagesOf([&] { EXPECT_EQ(async.flush(), kExceptionResult); }), expected);
}

TEST_F(WithoutVideo, TheCloseSucceeds) {
    EXPECT_EQ(openSound().close(), aiNoError);
}

}  // namespace
