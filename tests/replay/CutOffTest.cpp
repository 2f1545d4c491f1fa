// Logs that end anywhere, as those of crashes do.
#include "LoadedPlugin.h"

using programs::Sample;
using recording::kSample;
using recording::Made;
using Texts = std::vector<std::string>;

namespace {

// The first line at which to cut: not within the dump of tables at the start, whose lines are all the same to a replay.
std::size_t firstCut(const Texts& lines) {
    std::size_t line = 0;
    while (line < lines.size() && lines[line].find("[imGetIndFormat]") == std::string::npos) {
        ++line;
    }
    return line;
}

TEST(CutOff, ALogCutAfterAnyLineReplaysItsCalls) {
    const Sample sample(kSample);
    const Texts lines = recording::linesOf(
        recording::record([&](hostkit::ImporterSession& session) { recording::playClip(session, sample.path()); }));
    LoadedPlugin plugin;
    std::string log;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        log += lines[i];
        if (i < firstCut(lines)) {
            continue;
        }
        const std::vector<Made> calls = plugin.replay(log, {sample.path()});
        EXPECT_EQ(recording::differencesOf(calls), Texts{}) << "cut after line " << i + 1 << ": " << lines[i];
        const Texts skipped = recording::skippedOf(calls);
        EXPECT_LE(skipped.size(), 1u) << "cut after line " << i + 1;
        EXPECT_TRUE(skipped.empty() || skipped[0].ends_with("the log does not tell its arguments")) << skipped[0];
    }
}

TEST(CutOff, ALogWithoutItsStartReplaysItsCalls) {
    const Sample sample(kSample);
    const Texts lines = recording::linesOf(
        recording::record([&](hostkit::ImporterSession& session) { recording::playClip(session, sample.path()); }));
    LoadedPlugin plugin;
    for (std::size_t start = firstCut(lines); start + 1 < lines.size(); start += 7) {
        std::string log;
        for (std::size_t i = start; i < lines.size(); ++i) {
            log += lines[i];
        }
        plugin.replay(log, {sample.path()});        // skips calls for files whose opening is missing
    }
}

TEST(CutOff, ALogCutWithinALineReplaysItsCalls) {
    const Sample sample(kSample);
    const std::string log =
        recording::record([&](hostkit::ImporterSession& session) { recording::playClip(session, sample.path()); });
    LoadedPlugin plugin;
    for (const char* word : {"frameTime: 20321280000", "    OnGetFrame: [aiNoError] (0), [imNo", "m_filePathUtf8: '",
                             "inFrameFormats[0]: 16 8 PrPixel", "importAudioRec7P->position: -"}) {
        const std::size_t at = log.find(word);
        ASSERT_NE(at, std::string::npos) << word;
        const std::string cut = log.substr(0, at + std::string(word).size());
        EXPECT_EQ(recording::differencesOf(plugin.replay(cut, {sample.path()})), Texts{}) << word;
    }
}

TEST(CutOff, AnUnfinishedLastCallIsMade) {
    const Sample sample(kSample);
    const std::string log =
        recording::record([&](hostkit::ImporterSession& session) { recording::playClip(session, sample.path()); });
    const std::size_t end = log.find('\n', log.find("inFrameFormats[0]")) + 1;
    LoadedPlugin plugin;
    const std::vector<Made> calls = plugin.replay(log.substr(0, end), {sample.path()});
    EXPECT_EQ(calls.back().text, "imGetSourceVideo sample.avi, time 0, 0 x 0 yuy2");
    EXPECT_EQ(calls.back().logged, std::nullopt);
    EXPECT_EQ(calls.back().skipped, std::nullopt);
    EXPECT_EQ(calls.back().now, imNoErr);
}

}  // namespace
