// Reading calls from logs of a few lines.
#include "Recording.h"

#include <sstream>

using replay::Entry;
using replay::LoggedCall;
using replay::RecordedLog;
using Texts = std::vector<std::string>;

namespace {

std::string line(const char* thread, const std::string& message) {
    return std::string("[2026-11-16 00:44:11] [") + thread + "] " + message + "\r\n";
}

std::string ruled(const char* thread, const std::string& header) {
    return line(thread, "----------------------") + line(thread, header);
}

TEST(LogReader, SeparatesTheCallsOfSeveralThreads) {
    const RecordedLog log = recording::read(ruled("7", "[imGetInfo8] (37)") + ruled("8", "[imAnalysis] (12)") +
                                            line("7", "of seven") + line("8", "of eight") +
                                            line("8", "    [imNoErr] (0)") + line("7", "    [imBadFile] (2)"));
    ASSERT_EQ(log.calls.size(), 2u);
    EXPECT_EQ(log.calls[0].selector, imGetInfo8);
    EXPECT_EQ(log.calls[0].messages, Texts{"of seven"});
    EXPECT_EQ(log.calls[0].result, imBadFile);
    EXPECT_EQ(log.calls[0].line, 2u);
    EXPECT_EQ(log.calls[1].selector, imAnalysis);
    EXPECT_EQ(log.calls[1].messages, Texts{"of eight"});
    EXPECT_EQ(log.calls[1].result, imNoErr);
    EXPECT_EQ(log.threads, 2u);
}

TEST(LogReader, LinesMayEndWithoutACarriageReturn) {
    std::string text = ruled("7", "[imAnalysis] (12)") + line("7", "of seven") + line("7", "    [imNoErr] (0)");
    std::erase(text, '\r');
    const RecordedLog log = recording::read(text);
    ASSERT_EQ(log.calls.size(), 1u);
    EXPECT_EQ(log.calls[0].messages, Texts{"of seven"});
    EXPECT_EQ(log.calls[0].result, imNoErr);
}

TEST(LogReader, AssignsABackgroundDecodeToTheRequestOfItsTime) {
    const RecordedLog log = recording::read(
        ruled("7", "[OnInitiateAsyncRead]") + line("7", "REQUEST: Adding: 0, frameTime: 0") +
        line("7", "    OnInitiateAsyncRead: [aiNoError] (0)") + ruled("7", "[OnInitiateAsyncRead]") +
        line("7", "REQUEST: Adding: 1, frameTime: 500") + line("9", "inFrameTime: 500") + line("8", "inFrameTime: 0") +
        line("9", "of frame 1") + line("7", "    OnInitiateAsyncRead: [aiNoError] (0)"));
    ASSERT_EQ(log.calls.size(), 2u);
    EXPECT_EQ(log.calls[0].decode, Texts{"inFrameTime: 0"});
    EXPECT_EQ(log.calls[1].decode, (Texts{"inFrameTime: 500", "of frame 1"}));
    EXPECT_EQ(log.calls[1].entry, Entry::Async);
    EXPECT_EQ(log.calls[1].selector, aiInitiateAsyncRead);
}

TEST(LogReader, TheResultOfACollectionIsTheAsynchronousOne) {
    const RecordedLog log = recording::read(ruled("7", "[OnGetFrame]") +
                                            line("7", "    OnGetFrame: [aiUnknownError] (2), [imFrameNotFound] (28)"));
    EXPECT_EQ(log.calls.at(0).result, aiUnknownError);
}

TEST(LogReader, TheAsynchronousCloseIsACallWithoutAResult) {
    const RecordedLog log = recording::read(line("7", "QuorvaneAsyncImporter::~QuorvaneAsyncImporter()") +
                                            line("7", "VideoInfo::~VideoInfo()") + ruled("7", "[imInit] (0)"));
    ASSERT_EQ(log.calls.size(), 2u);
    EXPECT_EQ(log.calls[0].selector, aiClose);
    EXPECT_TRUE(log.calls[0].hasNoResult());
    EXPECT_EQ(log.calls[0].messages.size(), 2u);
}

TEST(LogReader, SeveralLinesOfAMessageAreJoined) {
    const RecordedLog log = recording::read(ruled("7", "[imGetInfo8] (37)") + line("7", "Failed to parse avi: one") +
                                            "two\r\n\r\n" + line("7", "    [imBadFile] (2)"));
    EXPECT_EQ(log.calls.at(0).messages, Texts{"Failed to parse avi: one\ntwo\n"});
    EXPECT_EQ(log.calls.at(0).result, imBadFile);
}

TEST(LogReader, AnExceptionEndsItsCallWithResult99) {
    const RecordedLog log = recording::read(
        ruled("7", "[imAnalysis] (12)") +
        line("7", "FATAL: Unhandled exception during [imAnalysis] (12): m_videoInfo is NULL") +
        ruled("7", "[OnFlush]") +
        line("7", "xAsyncImportEntry: FATAL: Unhandled exception during aiFlush (2): m_videoInfo is NULL"));
    ASSERT_EQ(log.calls.size(), 2u);
    EXPECT_EQ(log.calls[0].result, 99);
    EXPECT_EQ(log.calls[1].result, 99);
}

TEST(LogReader, AnUnfinishedLastCallHasNoResult) {
    const RecordedLog log = recording::read(ruled("7", "[imGetInfo8] (37)") + line("7", "m_streamIndex:  0"));
    EXPECT_EQ(log.calls.at(0).result, std::nullopt);
    EXPECT_FALSE(log.isComplete);
}

TEST(LogReader, TheDumpAtTheStartIsReadAsMessages) {
    const RecordedLog log = recording::read(ruled("7", "[imInit] (0)") + line("7", "----") +
                                            line("7", "[2Y8Q] : (104) YUV 4:2:2 8     : 'Quorvane'") +
                                            line("7", "    <- PrPixelFormat_YUYV_422_8u_601") +
                                            line("7", "    [imNoErr] (0)"));
    ASSERT_EQ(log.calls.size(), 1u);
    EXPECT_EQ(log.calls[0].messages.size(), 3u);
    EXPECT_EQ(log.calls[0].result, imNoErr);
}

TEST(LogReader, ReadsTheApplicationAndTheEnd) {
    const RecordedLog log = recording::read(line("7", "Log opened") + line("7", "Application: C:\\editor.exe") +
                                            line("7", "Module destroy") + line("7", "Log closed"));
    EXPECT_EQ(log.application, "C:\\editor.exe");
    EXPECT_TRUE(log.isComplete);
    EXPECT_EQ(log.remarks, Texts{});
}

TEST(LogReader, ASecondLogInTheSameFileIsIgnoredAndReported) {
    const std::string one = line("7", "Log opened") + ruled("7", "[imInit] (0)") + line("7", "    [imNoErr] (0)");
    const RecordedLog log = recording::read(one + one);
    EXPECT_EQ(log.calls.size(), 1u);
    EXPECT_EQ(log.remarks, Texts{"Line 5 begins another log, which was left out."});
}

TEST(LogReader, LinesOutsideAnyCallAreCounted) {
    const RecordedLog log = recording::read("a word\r\n" + line("7", "unheard of") + line("7", "inFrameTime: 5"));
    EXPECT_EQ(log.calls.size(), 0u);
    EXPECT_EQ(log.remarks, Texts{"Lines that belong to no call: 3."});
}

TEST(LogReader, ATextThatIsNotALogIsRefused) {
    for (const char* text : {"", "\n\n\n", "Dear support,\nit does not work.\n", "[2026-11-16] [7] Log opened\n",
                             "[2026-11-16 00:44:11] [seven] Log opened\n", "[2026-11-16 00:44:11] [] x\n"}) {
        EXPECT_THROW(recording::read(text), replay::NotALog) << text;
    }
}

TEST(LogReader, OnlyTheStartOfALongLineIsKept) {
    std::istringstream in(ruled("7", "[imAnalysis] (12)") + line("7", std::string(5000000, 'x')) +
                          line("7", "    [imNoErr] (0)"));
    const RecordedLog log = replay::readLog(in, {.lineBytes = 1000});
    EXPECT_EQ(log.calls.at(0).messages.at(0), std::string(974, 'x'));       // of 1000, 26 are time and thread
    EXPECT_EQ(log.calls.at(0).result, imNoErr);
    EXPECT_EQ(log.remarks, Texts{"Lines of more than 1000 bytes were cut."});
}

TEST(LogReader, ATooLongLogIsReadUpToTheLimit) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += ruled("7", "[imInit] (0)") + line("7", "    [imNoErr] (0)");
    }
    std::istringstream in(text);
    const RecordedLog log = replay::readLog(in, {.keptBytes = 10000});
    EXPECT_GT(log.calls.size(), 10u);
    EXPECT_LT(log.calls.size(), 50u);
    ASSERT_EQ(log.remarks.size(), 1u);
    EXPECT_EQ(log.remarks[0].substr(0, 44), "The log is too long: it was read up to line ");
}

}  // namespace
