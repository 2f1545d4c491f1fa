// Asynchronous frames of the plug-in through the program: the same as the synchronous ones, whatever the order.
#include "importhost/RunLog.h"
#include "importhost/Sample.h"

using programs::runImporthost;
using programs::logOf;
using programs::ProgramRun;
using programs::Sample;

namespace {

int occurrences(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

ProgramRun checksums(const Sample& sample, std::vector<std::string> options) {
    std::vector<std::string> arguments = {"frames", sample.text(), "--as", "checksum"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return runImporthost(arguments);
}

TEST(AsyncFrames, EqualTheSynchronousOnes) {
    const Sample sample({"--type", "2Y8Q", "--size", "32x16", "--frames", "20", "--drop", "3"});
    const ProgramRun reference = checksums(sample, {});
    EXPECT_EQ(occurrences(reference.output, "\n"), 20);
    for (const char* ahead : {"1", "4", "50"}) {
        const ProgramRun run = checksums(sample, {"--async", ahead});
        EXPECT_EQ(run.output, reference.output) << ahead;
        EXPECT_EQ(run.exitCode, 0) << ahead;
        EXPECT_EQ(run.errors, "") << ahead;
    }
}

TEST(AsyncFrames, ShuffledAreTheSameAndPrintTheSeed) {
    const Sample sample({"--type", "AR8Q", "--size", "32x16", "--frames", "20"});
    const ProgramRun run = checksums(sample, {"--async", "6", "--shuffle", "7"});
    EXPECT_EQ(run.output, checksums(sample, {}).output);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "importhost: Frames are collected in the order of seed 7.\n");
}

TEST(AsyncFrames, SurviveEveryChangeOfFocus) {
    const Sample sample({"--type", "2Y8Q", "--size", "32x16", "--frames", "12"});
    const ProgramRun run =
        checksums(sample, {"--async", "5", "--shuffle", "3", "--refocus", "4", "--profile", "editor-14", "--log"});
    EXPECT_EQ(run.output, checksums(sample, {}).output);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    const std::string log = logOf(run);
    EXPECT_EQ(occurrences(log, "QuorvaneAsyncImporter::QuorvaneAsyncImporter()"), 3);
    EXPECT_EQ(occurrences(log, "QuorvaneAsyncImporter::~QuorvaneAsyncImporter()"), 3);
    EXPECT_EQ(occurrences(log, "[OnFlush]\n") + occurrences(log, "[OnFlush]\r\n"), 3);
    EXPECT_EQ(occurrences(log, "[imQuietFile] (8)"), 2);
}

TEST(AsyncFrames, AreAnnouncedBeforeTheyAreCollected) {
    const Sample sample({"--type", "2Y8Q", "--size", "32x16", "--frames", "6"});
    const std::string log = logOf(checksums(sample, {"--async", "3", "--log"}));
    EXPECT_EQ(occurrences(log, "REQUEST: Adding:"), 6);
    EXPECT_EQ(occurrences(log, "REQUEST: Requesting:"), 6);
    EXPECT_EQ(occurrences(log, "REQUEST: ERROR"), 0);
    EXPECT_LT(log.find("REQUEST: Adding: 2,"), log.find("REQUEST: Requesting: 0,"));
    EXPECT_GT(log.find("REQUEST: Adding: 3,"), log.find("REQUEST: Requesting: 0,"));
}

TEST(AsyncFrames, AreOffByDefault) {
    const Sample sample({"--type", "2Y8Q", "--size", "32x16", "--frames", "2"});
    const std::string log = logOf(checksums(sample, {"--log"}));
    EXPECT_EQ(occurrences(log, "[imGetSourceVideo] (47)"), 2);
    EXPECT_EQ(occurrences(log, "imCreateAsyncImporter"), 0);
}

TEST(AsyncFrames, AnOldHostCannotAskForThem) {
    const Sample sample({"--type", "2Y8Q", "--size", "32x16", "--frames", "2"});
    const ProgramRun run = checksums(sample, {"--async", "2", "--profile", "no-async"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.errors, "importhost: The host 'no-async' does not know asynchronous frames.\n");
    EXPECT_EQ(checksums(sample, {"--profile", "no-async"}).exitCode, 0);
}

TEST(AsyncFrames, ShuffleRequiresAsync) {
    const Sample sample({"--type", "2Y8Q", "--size", "32x16", "--frames", "2"});
    EXPECT_EQ(checksums(sample, {"--shuffle", "7"}).exitCode, 2);
}

TEST(AsyncFrames, AFailedOneIsPrintedAndTheOthersDelivered) {
    const Sample sample({"--type", "2Y8Q", "--size", "32x16", "--frames", "3", "--index", "idx1"});
    std::fstream file(sample.path(), std::ios::binary | std::ios::in | std::ios::out);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const std::size_t sizeOfFrame1 = bytes.rfind("idx1") + 8 + 16 * 1 + 12;
    file.seekp(static_cast<std::streamoff>(sizeOfFrame1));
    file.write("\x00\x00\x00\x01", 4);         // 16 MiB, which the file does not have
    file.close();
    const ProgramRun run = checksums(sample, {"--async", "3"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(occurrences(run.output, "\n"), 2);
    EXPECT_EQ(run.errors, "importhost: Frame 1 failed: aiUnknownError (2)\n");
}

TEST(AsyncFrames, FailedAnnouncementsArePrinted) {
    const Sample sample({"--type", "2Y8Q", "--size", "32x16", "--frames", "2"});
    const ProgramRun run = checksums(sample, {"--async", "2", "--profile", "no-ppix-suite"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "importhost: Frame 0 failed: announcing it gave malUnknownError (99)\n"
                          "importhost: Frame 1 failed: announcing it gave malUnknownError (99)\n");
}

TEST(AsyncFrames, FailIfThePluginOffersNone) {
    const fakes::FakeClip clip;
    const ProgramRun run = programs::withFake({"frames", hostkit::toUtf8(clip.path()), "--async", "2"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "importhost: The plug-in does not offer asynchronous frames for this clip.\n");
}

}  // namespace
