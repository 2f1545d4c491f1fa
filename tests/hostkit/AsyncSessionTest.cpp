// The asynchronous side of a session, with good and bad importers inside the test.
#include "hostkit/sessions/AsyncSession.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

using namespace hostkit;

namespace {

using Sentences = std::vector<std::string>;

enum class Manner {
    Good, NoAnswer, NoEntry, NoFrame, FrameOfAFailure, WritesToRecord, WritesPastRecord, Throws,
    RefusesToClose
};

// The importer's state: an entry has no context.
Manner manner = Manner::Good;
PrTime seenTime = 0;
csSDK_int32 seenFormats = 0;
std::atomic<int> objects = 0;
int privateDatum = 0;

PPixHand makeFrame() {
    prRect bounds;
    bounds.right = 4;
    bounds.bottom = 2;
    PPixHand frame = nullptr;
    Host::current().frames().create(frame, PrPPixBufferAccess_WriteOnly, PrPixelFormat_BGRA_4444_8u, bounds);
    return frame;
}

csSDK_int32 onAnnounce(aiAsyncRequest& request) {
    if (manner == Manner::Throws) {
        throw std::runtime_error("not today");
    }
    seenTime = request.inSourceRec.inFrameTime;
    seenFormats = request.inSourceRec.inNumFrameFormats;
    if (manner == Manner::WritesToRecord) {
        request.unused1 = -1;
    }
    return aiNoError;
}

csSDK_int32 onGet(imSourceVideoRec& record) {
    if (manner == Manner::NoFrame) {
        return aiNoError;
    }
    if (manner == Manner::WritesPastRecord) {
        reinterpret_cast<char*>(&record)[Host::current().profile().recordSizes().sourceVideo] = 0;
    }
    *record.outFrame = makeFrame();
    return manner == Manner::FrameOfAFailure ? aiUnknownError : aiNoError;
}

csSDK_int32 asyncEntry(csSDK_int32 selector, void* parameter) {
    switch (selector) {
        case aiInitiateAsyncRead: return onAnnounce(*static_cast<aiAsyncRequest*>(parameter));
        case aiGetFrame: return onGet(*static_cast<imSourceVideoRec*>(parameter));
        case aiFlush: return parameter == &privateDatum ? aiNoError : aiUnknownError;
        case aiClose: --objects; return manner == Manner::RefusesToClose ? aiUnknownError : aiNoError;
        default: return aiUnsupported;
    }
}

csSDK_int32 importEntry(csSDK_int32 selector, imStdParms*, void* param1, void*) {
    if (selector != imCreateAsyncImporter || manner == Manner::NoAnswer) {
        return imUnsupported;
    }
    auto& record = *static_cast<imAsyncImporterCreationRec*>(param1);
    record.outAsyncEntry = manner == Manner::NoEntry ? nullptr : &asyncEntry;
    record.outAsyncPrivateData = &privateDatum;
    ++objects;
    return imNoErr;
}

const std::vector<imFrameFormat> kFormats = {{4, 2, PrPixelFormat_BGRA_4444_8u}, {0, 0, 0}};

class Async : public testing::Test {
protected:
    void SetUp() override {
        manner = Manner::Good;
        objects = 0;
    }

    void create(Manner importersManner = Manner::Good) {
        manner = importersManner;
        created = async.create().result;
    }

    Host host{hostProfile("editor-14")};
    ImporterSession session{host, &importEntry};
    ClipSession clip{session, "never-opened.avi"};
    AsyncSession async{session, clip};
    csSDK_int32 created = 0;
};

TEST_F(Async, AFrameIsAnnouncedAndCollected) {
    create();
    EXPECT_EQ(created, imNoErr);
    const auto announced = async.announce(700, kFormats);
    EXPECT_EQ(announced.result, aiNoError);
    EXPECT_EQ(announced.record.size(), 124u);
    EXPECT_EQ(valueOf(announced->inPrivateData), static_cast<void*>(&privateDatum));
    EXPECT_EQ(seenTime, 700);
    EXPECT_EQ(seenFormats, 2);
    const AsyncFrameAnswer collected = async.get(700, kFormats);
    EXPECT_EQ(collected.result, aiNoError);
    EXPECT_EQ(collected.frame.view()->width(), 4);
    EXPECT_EQ(host.violations(), Sentences{});
}

TEST_F(Async, CallsAreLoggedWithTheirResults) {
    create();
    async.announce(700, kFormats);
    async.cancel(700, kFormats);
    async.get(800, kFormats);
    async.flush();
    async.close();
    EXPECT_EQ(async.calls(), (std::vector<AsyncCall>{{aiInitiateAsyncRead, 700, aiNoError},
                                                     {aiCancelAsyncRead, 700, aiUnsupported},
                                                     {aiGetFrame, 800, aiNoError},
                                                     {aiFlush, std::nullopt, aiNoError},
                                                     {aiClose, std::nullopt, aiNoError}}));
}

TEST_F(Async, AnOpenImporterIsAProblemUntilItIsClosed) {
    create();
    EXPECT_EQ(host.problems(), Sentences{"Asynchronous importers not closed: 1."});
    EXPECT_EQ(async.close(), aiNoError);
    EXPECT_EQ(host.problems(), Sentences{});
    EXPECT_EQ(objects, 0);
}

TEST_F(Async, AnImporterThatRefusesToCloseIsAProblem) {
    create(Manner::RefusesToClose);
    EXPECT_EQ(async.close(), aiUnknownError);
    EXPECT_FALSE(async.isOpen());
    EXPECT_EQ(host.problems(), Sentences{"Asynchronous importers not closed: 1."});
}

TEST_F(Async, TheDestructorFlushesAndCloses) {
    {
        AsyncSession other(session, clip);
        other.create();
        EXPECT_EQ(objects, 1);
    }
    EXPECT_EQ(objects, 0);
    EXPECT_EQ(host.problems(), Sentences{});
}

TEST_F(Async, CloseIsSentOnce) {
    create();
    async.close();
    EXPECT_EQ(async.close(), aiNoError);
    EXPECT_EQ(objects, 0);
    EXPECT_EQ(async.calls().size(), 1u);
}

TEST_F(Async, ASecondImporterIsRefusedWhileOneIsOpen) {
    create();
    EXPECT_THROW(async.create(), std::logic_error);
    async.close();
    EXPECT_EQ(async.create().result, imNoErr);
}

TEST_F(Async, WithoutAnImporterCallsThrow) {
    create(Manner::NoAnswer);
    EXPECT_EQ(created, imUnsupported);
    EXPECT_FALSE(async.isOpen());
    EXPECT_THROW(async.flush(), std::logic_error);
}

TEST_F(Async, APromiseWithoutAnEntryIsAProblem) {
    create(Manner::NoEntry);
    EXPECT_FALSE(async.isOpen());
    EXPECT_EQ(host.problems(),
              Sentences{"An asynchronous importer was promised, but its entry or its data is missing."});
}

TEST_F(Async, ASuccessWithoutAFrameIsAProblem) {
    create(Manner::NoFrame);
    EXPECT_FALSE(async.get(0, kFormats).frame);
    EXPECT_EQ(host.violations(),
              Sentences{"An asynchronous frame was collected without a frame of the host's."});
}

TEST_F(Async, AFrameOfAFailureIsAProblem) {
    create(Manner::FrameOfAFailure);
    EXPECT_EQ(async.get(0, kFormats).result, aiUnknownError);
    EXPECT_EQ(host.violations(), Sentences{"An asynchronous collection failed and gave a frame all the same."});
}

TEST_F(Async, AWriteToTheRequestIsAProblem) {
    create(Manner::WritesToRecord);
    const auto announced = async.announce(0, kFormats);
    EXPECT_EQ(announced.written, (std::vector<ByteRange>{{8, 4}}));
    EXPECT_EQ(host.violations(), Sentences{"Asynchronous selector 0 wrote to the host's record: 8-11."});
}

TEST_F(Async, AWritePastTheRecordIsAProblem) {
    create(Manner::WritesPastRecord);
    async.get(0, kFormats);
    EXPECT_EQ(host.violations(), Sentences{"Asynchronous selector 3 wrote outside its record of 112 bytes."});
}

TEST_F(Async, AnExceptionIsAResultAndAProblem) {
    create(Manner::Throws);
    EXPECT_EQ(async.announce(0, kFormats).result, kEscapedException);
    EXPECT_EQ(host.violations(), Sentences{"An exception left asynchronous selector 0."});
}

TEST_F(Async, FramesAreCollectedOnManyThreads) {
    create();
    std::atomic<int> delivered = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (PrTime time = 0; time < 25; ++time) {
                delivered += async.get(time, kFormats).frame ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(delivered, 100);
    EXPECT_EQ(async.calls().size(), 100u);
    async.close();
    EXPECT_EQ(host.problems(), Sentences{});
}

TEST(AsyncResults, HaveNames) {
    EXPECT_EQ(asyncResultText(aiUnknownError), "aiUnknownError (2)");
    EXPECT_EQ(asyncResultText(77), "unknown (77)");
}

}  // namespace
