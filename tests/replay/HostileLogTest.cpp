// Malicious logs, and damaged ones.
#include "LoadedPlugin.h"

#include "replay/LineScan.h"

#include <random>

using programs::Sample;
using recording::kSample;
using recording::Made;
using Texts = std::vector<std::string>;

namespace {

std::string recordedClip(const Sample& sample) {
    return recording::record([&](hostkit::ImporterSession& session) { recording::playClip(session, sample.path()); });
}

TEST(HostileLog, ImpossibleBuffersAreNotReplayed) {
    const Sample sample(kSample);
    std::string log = recordedClip(sample);
    log = recording::replaced(log, "importAudioRec7P->size    : 100", "importAudioRec7P->size    : 4294967295");
    log = recording::replaced(log, "buffersize: 300", "buffersize: 2147483647");
    log = recording::replaced(log, "buffersize: 32", "buffersize: 2000000000");
    LoadedPlugin plugin;
    EXPECT_EQ(recording::skippedOf(plugin.replay(log, {sample.path()})),
              (Texts{"imImportAudio7 sample.avi, 4294967295 sample frames from 0: the request is too big to be played",
                     "imAnalysis sample.avi, 2147483647 bytes: the buffer is too big to be played",
                     "imDataRateAnalysis sample.avi, 2000000000 bytes: the buffer is too big to be played"}));
}

TEST(HostileLog, NumbersAtTheirLimitsAreReplayed) {
    const Sample sample(kSample);
    std::string log = recordedClip(sample);
    log = recording::replaced(log, "importAudioRec7P->position: 0", "importAudioRec7P->position: 9223372036854775807");
    log = recording::replaced(log, "buffersize: 300", "buffersize: -2147483648");
    log = recording::replaced(log, "buffersize: 32", "buffersize: -1");
    log = recording::replaced(log, "fileInfoRec8P->streamIdx: 0", "fileInfoRec8P->streamIdx: -2147483648");
    log = recording::replaced(log, "inFrameTime: 0", "inFrameTime: -9223372036854775808");
    log = recording::replaced(log, "inFrameFormats[0]: 0 0", "inFrameFormats[0]: 2147483647 -2147483648");
    log = recording::replaced(log, "frameTime: 20321280000", "frameTime: -9223372036854775808");
    LoadedPlugin plugin;
    EXPECT_EQ(recording::skippedOf(plugin.replay(log, {sample.path()})), Texts{});
}

TEST(HostileLog, AValidLogWithWrongBytesDoesNoHarm) {
    const Sample sample(kSample);
    const std::string honest = recordedClip(sample);
    LoadedPlugin plugin;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        std::string log = honest;
        for (int i = 0; i < 200; ++i) {
            log[random() % log.size()] = static_cast<char>(random() % 256);
        }
        SCOPED_TRACE("seed " + std::to_string(seed));
        EXPECT_GT(plugin.replay(log, {sample.path()}).size(), 10u);
    }
}

TEST(HostileLog, AValidLogWithShuffledLinesDoesNoHarm) {
    const Sample sample(kSample);
    Texts lines = recording::linesOf(recordedClip(sample));
    LoadedPlugin plugin;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        for (int i = 0; i < 100; ++i) {
            std::swap(lines[random() % lines.size()], lines[random() % lines.size()]);
        }
        std::string log;
        for (const std::string& line : lines) {
            log += line;
        }
        SCOPED_TRACE("seed " + std::to_string(seed));
        plugin.replay(log, {sample.path()});
    }
}

TEST(HostileLog, BytesAfterAValidLineDoNoHarm) {
    std::mt19937 random(1);
    std::string log = "[2026-11-16 00:44:11] [7] ----------------------\r\n"
                      "[2026-11-16 00:44:11] [7] [imAnalysis] (12)\r\n";
    for (int i = 0; i < 1000000; ++i) {
        log.push_back(static_cast<char>(random() % 256));
    }
    const replay::RecordedLog read = recording::read(log);
    EXPECT_EQ(read.calls.size(), 1u);
    LoadedPlugin plugin;
    EXPECT_EQ(recording::skippedOf(plugin.replay(log, {})),
              Texts{"imAnalysis: the log does not tell its arguments"});
}

TEST(HostileLog, ControlCharactersAreEscaped) {
    EXPECT_EQ(replay::printable("a\x1b[2Jb\x7f\r\n\xc3\xa4"), "a\\x1b[2Jb\\x7f\\x0d\\x0a\xc3\xa4");
}

}  // namespace
