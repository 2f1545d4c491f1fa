// The handled selectors, their results, and the log lines around each call.
#include "HostFixture.h"
#include "VocabularyTables.h"

#include <array>
#include <cstring>
#include <limits>
#include <set>

namespace {

const std::set<csSDK_int32> kHandled = {0, 1, 8, 9, 12, 13, 14, 25, 27, 36, 37, 39, 46, 47, 54, 64};

std::string nameOf(csSDK_int32 selector) {
    for (const CodeName& row : kSelectors) {
        if (row.code == selector) {
            return row.name;
        }
    }
    return "????";
}

std::string openingLine(csSDK_int32 selector) {
    return std::string("[").append(nameOf(selector)).append("] (").append(std::to_string(selector)).append(")");
}

class UnhandledSelectors : public testing::Test {
protected:
    UnhandledSelectors() { callWithMemory(-1); }   // the first call also opens the log

    // Passes memory that reveals any write instead of a record.
    csSDK_int32 callWithMemory(csSDK_int32 selector) {
        m_first.fill(0xA5);
        m_second.fill(0xA5);
        return m_run.call(selector, m_first.data(), m_second.data());
    }

    void expectAnsweredWithoutTouch(csSDK_int32 selector) {
        SCOPED_TRACE(selector);
        m_run.newMessages();
        EXPECT_EQ(callWithMemory(selector), 3);
        expectSameLines(m_run.newMessages(), {kRule, openingLine(selector), "    [imUnsupported] (3)"});
        for (const std::uint8_t byte : m_first) {
            ASSERT_EQ(byte, 0xA5);
        }
        for (const std::uint8_t byte : m_second) {
            ASSERT_EQ(byte, 0xA5);
        }
    }

    PluginRun m_run;
    std::array<std::uint8_t, 8192> m_first{};
    std::array<std::uint8_t, 8192> m_second{};
};

TEST_F(UnhandledSelectors, ReturnUnsupportedAndTouchNothing) {
    m_run.session().init();
    int count = 0;
    for (csSDK_int32 selector = -1; selector <= 100; ++selector) {
        if (!kHandled.contains(selector)) {
            expectAnsweredWithoutTouch(selector);
            ++count;
        }
    }
    EXPECT_EQ(count, 102 - 16);
}

TEST_F(UnhandledSelectors, MakeNoHostCalls) {
    m_run.session().init();
    m_run.host().calls().clear();
    m_run.host().calls().keepLines(true);
    for (csSDK_int32 selector = -1; selector <= 100; ++selector) {
        if (!kHandled.contains(selector)) {
            callWithMemory(selector);
        }
    }
    EXPECT_EQ(m_run.host().calls().lines(), Lines{});
}

TEST_F(UnhandledSelectors, IncludeExtremesAndHandledLowBits) {
    constexpr csSDK_int32 kLeast = std::numeric_limits<csSDK_int32>::min();
    constexpr csSDK_int32 kMost = std::numeric_limits<csSDK_int32>::max();
    for (const csSDK_int32 selector : {kLeast, kLeast + 36, kMost, -2, -36, 256 + 36, 65536 + 36, 0x1000000 + 36}) {
        expectAnsweredWithoutTouch(selector);
    }
}

TEST_F(UnhandledSelectors, ReturnUnsupportedBeforeInitToo) { expectAnsweredWithoutTouch(5); }

TEST_F(UnhandledSelectors, ReturnUnsupportedWithoutParameters) {
    EXPECT_EQ(m_run.entry()(5, nullptr, nullptr, nullptr), 3);
    EXPECT_EQ(m_run.entry()(65, nullptr, nullptr, nullptr), 3);
}

TEST(Dispatch, Supports8Returns101WithoutParameters) {
    PluginRun run;
    EXPECT_EQ(run.entry()(36, nullptr, nullptr, nullptr), 101);
    const Lines messages = run.messages();
    expectSameLines(Lines(messages.begin() + 2, messages.end()),
                    {kRule, "[imGetSupports8] (36)", "    [malSupports8] (101)"});
}

TEST(Dispatch, TheSecondFormatIsABadIndexByNameAndNumber) {
    PluginRun run;
    run.session().init();
    run.newMessages();
    EXPECT_EQ(run.session().format(1).result, 301);
    const Lines messages = run.newMessages();
    EXPECT_EQ(messages.front(), kRule);
    EXPECT_EQ(messages.back(), "    [imBadFormatIndex] (301)");
}

TEST(Dispatch, PlainSelectorsWorkWithTheLogOff) {
    PluginRun run({}, false);
    EXPECT_EQ(run.session().init().result, 0);
    EXPECT_EQ(run.session().supports8(), 101);
    EXPECT_EQ(run.session().format(0).result, 0);
    EXPECT_EQ(run.session().format(1).result, 301);
    EXPECT_EQ(run.call(5), 3);
    EXPECT_EQ(run.session().shutdown(), 0);
}

// ---- handlers, each identified by something that only it does --------------------------------------------------

class HandledSelectors : public testing::Test {
protected:
    HandledSelectors() {
        m_run.session().init();
        m_clip.open();
        m_clip.info(0);
        m_run.newMessages();
    }

    // Expects the call's log to begin with its rule and end with its result.
    void expectFramed(csSDK_int32 selector, const std::string& resultLine) {
        const Lines messages = m_run.newMessages();
        ASSERT_GE(messages.size(), 3u);
        EXPECT_EQ(messages[0], kRule);
        EXPECT_EQ(messages[1], openingLine(selector));
        EXPECT_EQ(messages.back(), resultLine);
    }

    ClipFile m_file;
    PluginRun m_run;
    hostkit::ClipSession m_clip{m_run.session(), m_file.path()};
};

TEST_F(HandledSelectors, QuietFileClosesTheFile) {
    EXPECT_EQ(m_clip.quiet(), 0);
    EXPECT_EQ(m_clip.fileRef(), imInvalidHandleValue());
    expectFramed(8, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, CloseFileClosesTheFile) {
    EXPECT_EQ(m_clip.close(), 0);
    EXPECT_EQ(m_clip.fileRef(), imInvalidHandleValue());
    expectFramed(9, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, AnalysisReturnsAText) {
    const hostkit::AnalysisAnswer answer = m_clip.analysis();
    EXPECT_EQ(answer.result, 0);
    EXPECT_NE(answer.text.find("Video stream:"), std::string::npos);
    expectFramed(12, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, DataRateAnalysisReturnsASamplePerFrame) {
    const hostkit::DataRateAnswer answer = m_clip.dataRate();
    EXPECT_EQ(answer.sizeCall.result, 0);
    EXPECT_EQ(answer.samples.size(), 3u);
    expectFramed(13, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, IndFormatReturnsTheFormat) {
    const auto answer = m_run.session().format(0);
    EXPECT_EQ(answer.result, 0);
    EXPECT_STREQ(answer->FormatName, "Quorvane AVI");
    expectFramed(14, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, ImportAudioDeliversSamples) {
    const hostkit::AudioAnswer answer = m_clip.audio(0, 16, 2);
    EXPECT_EQ(answer.result, 0);
    ASSERT_EQ(answer.channels.size(), 2u);
    const float undelivered = hostkit::undeliveredSample();
    for (const auto& channel : answer.channels) {
        for (const float sample : channel) {
            EXPECT_NE(std::memcmp(&sample, &undelivered, sizeof sample), 0);
        }
    }
    expectFramed(25, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, IndPixelFormatReturnsAFormat) {
    const auto answer = m_clip.pixelFormat(0);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(hostkit::valueOf(answer->outPixelFormat), static_cast<csSDK_uint32>(PrPixelFormat_YUYV_422_8u_601));
    expectFramed(27, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, InfoDescribesThePicture) {
    const auto answer = m_clip.info(0);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(hostkit::valueOf(answer->vidInfo.imageWidth), 32);
    expectFramed(37, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, OpenOpensAFile) {
    hostkit::ClipSession other(m_run.session(), m_file.path());
    EXPECT_EQ(other.open().result, 0);
    EXPECT_NE(other.fileRef(), imInvalidHandleValue());
    expectFramed(39, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, SourceVideoDeliversAFrame) {
    const hostkit::FrameAnswer answer = m_clip.frame(0, smallFrame());
    EXPECT_EQ(answer.result, 0);
    EXPECT_TRUE(answer.frame);
    expectFramed(47, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, SubTypeNamesReturnsAllOfThem) {
    const hostkit::SubTypesAnswer answer = m_run.session().subTypeNames(kFileType);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer.records.size(), 16u);
    expectFramed(54, "    [imNoErr] (0)");
}

TEST_F(HandledSelectors, AudioChannelLayoutReturnsLabels) {
    const hostkit::LayoutAnswer answer = m_clip.channelLayout(-1);
    EXPECT_EQ(answer.result, 0);
    ASSERT_EQ(answer.labels.size(), 32u);
    EXPECT_EQ(answer.labels[0], 100);
    EXPECT_EQ(answer.labels[1], 101);
    expectFramed(64, "    [imNoErr] (0)");
}

}  // namespace
