// Creating an asynchronous importer: its own file, its own decoder, and every reason to refuse it.
#include "async/support/AsyncTest.h"

#include "async/support/FileUse.h"

#include <algorithm>

namespace {

constexpr char kAsyncBorn[] = "QuorvaneAsyncImporter::QuorvaneAsyncImporter()";
constexpr char kAsyncGone[] = "QuorvaneAsyncImporter::~QuorvaneAsyncImporter()";

aviwriter::SampleOptions withSounds(std::size_t count) {
    aviwriter::SampleOptions options = smallVideo(3);
    options.audio.resize(count);
    for (aviwriter::SampleAudio& audio : options.audio) {
        audio.sampleRate = 8000;
    }
    return options;
}

class Creation : public AsyncTest {
protected:
    // Expects no importer, an unchanged record, and no resource still held.
    void expectRefused(const hostkit::ClipSession& clip, csSDK_int32 code) {
        const StandinCounters before = codec();
        const int suitesBefore = host().suitesHeld();
        const auto created = create(clip.privateData());
        EXPECT_EQ(created.result, code);
        EXPECT_EQ(created.written, std::vector<hostkit::ByteRange>{});
        EXPECT_EQ(logged(kAsyncBorn), 1);
        EXPECT_EQ(logged(kAsyncGone), 1);
        EXPECT_EQ(codec().openInstances, before.openInstances);
        EXPECT_EQ(codec().outstandingInits, before.outstandingInits);
        EXPECT_EQ(host().suitesHeld(), suitesBefore);
    }
};

TEST_F(Creation, WithoutAnImporterIsRefused) {
    const Lines lines = messagesOf([&] {
        const auto created = create(nullptr);
        EXPECT_EQ(created.result, imOtherErr);
        EXPECT_EQ(created.written, std::vector<hostkit::ByteRange>{});
    });
    EXPECT_EQ(lines, (Lines{"----------------------", "[imCreateAsyncImporter] (46)",
                            "ERROR: the host gave no importer", "    [imOtherErr] (5)"}));
}

TEST_F(Creation, OpensTheFileAgain) {
    const auto path = write("clip.avi", aviwriter::sampleBytes(smallVideo()));
    hostkit::ClipSession& clip = openClip(path);
    AsyncClip& async = openAsync(clip);
    clip.close();
    EXPECT_TRUE(isInUse(path));
    async.close();
    EXPECT_FALSE(isInUse(path));
}

TEST_F(Creation, OpensItsOwnCodecInstance) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    const std::uint32_t before = codec().openInstances;
    AsyncClip& async = openAsync(clip);
    EXPECT_EQ(codec().openInstances, before + 1);
    async.close();
    EXPECT_EQ(codec().openInstances, before);
}

TEST_F(Creation, ForAMissingFileIsRefused) {
    const auto path = write("clip.avi", aviwriter::sampleBytes(smallVideo()));
    hostkit::ClipSession& clip = openClip(path);
    clip.quiet();
    std::filesystem::rename(path, path.parent_path() / "elsewhere.avi");
    const Lines lines = messagesOf([&] { expectRefused(clip, imBadFile); });
    EXPECT_EQ(lines, (Lines{"----------------------", "[imCreateAsyncImporter] (46)",
                            "QuorvaneImporter::QuorvaneImporter()", kAsyncBorn, "Open: '<folder>/clip.avi', stream: 0",
                            kAsyncGone, "QuorvaneImporter::~QuorvaneImporter()", "    [imBadFile] (2)"}));
}

TEST_F(Creation, ForAFileThatIsNoLongerAviIsRefused) {
    const auto path = write("clip.avi", aviwriter::sampleBytes(smallVideo()));
    hostkit::ClipSession& clip = openClip(path);
    clip.quiet();
    write("clip.avi", aviwriter::Bytes(1000, 'x'));
    const Lines lines = messagesOf([&] { expectRefused(clip, imBadFile); });
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const std::string& line) { return line.starts_with("Failed to parse avi: "); }),
              1);
}

TEST_F(Creation, ForAFileThatLostItsVideoIsRefused) {
    const auto path = write("clip.avi", aviwriter::sampleBytes(withSounds(1)));
    hostkit::ClipSession& clip = openClip(path);
    clip.quiet();
    aviwriter::SampleOptions soundOnly = withSounds(1);
    soundOnly.hasVideo = false;
    write("clip.avi", aviwriter::sampleBytes(soundOnly));
    const Lines lines = messagesOf([&] { expectRefused(clip, imBadFile); });
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "Avi has no video stream"), 1);
}

TEST_F(Creation, IsRefusedIfTheCodecRefusesTheStream) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    failCodec(kStandinDecompressQuery);
    expectRefused(clip, imBadFile);
}

TEST_F(Creation, IsRefusedIfTheCodecOpensNoInstance) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    failCodec(kStandinOpen);
    expectRefused(clip, imBadFile);
}

TEST_F(Creation, LeavesTheImporterUnchanged) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    const auto before = clip.frame(timeOf(2), yuy3());
    openAsync(clip);
    const auto after = clip.frame(timeOf(2), yuy3());
    EXPECT_EQ(bytesOf(before.frame), bytesOf(after.frame));
    EXPECT_EQ(codec().calls[kStandinDecompressBegin], 1u) << "the importer's session continues";
}

TEST_F(Creation, SucceedsWhenMoreStreamsFollow) {
    hostkit::ClipSession& clip = openClip(withSounds(3));
    EXPECT_EQ(clip.info(0).result, imIterateStreams);
    expectFrame(openAsync(clip), clip, 2);
}

TEST_F(Creation, SucceedsForAStreamThatTheSelectionRejects) {
    const auto path = write("clip.avi", aviwriter::sampleBytes(withSounds(1)));
    hostkit::ClipSession& clip = openClip(path, 7);
    EXPECT_EQ(clip.info(7).result, imBadStreamIndex);
    const int suitesBefore = host().suitesHeld();
    const auto created = create(clip.privateData());
    EXPECT_EQ(created.result, imNoErr);
    EXPECT_EQ(host().suitesHeld(), suitesBefore + 6) << "held although no stream needed them";
    AsyncClip async(host(), *created.record);
    EXPECT_EQ(async.announce(0, yuy3()), 99);
}

TEST_F(Creation, UsesTheStreamOfTheLastOpen) {
    const auto path = write("clip.avi", aviwriter::sampleBytes(withSounds(2)));
    hostkit::ClipSession& clip = openClip(path, 1);
    clip.info(0);
    const Lines lines = messagesOf([&] { openAsync(clip); });
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "Open: '<folder>/clip.avi', stream: 1"), 1);
}

TEST_F(Creation, TwiceForOneFileMakesIndependentImporters) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    AsyncClip& first = openAsync(clip);
    AsyncClip& second = openAsync(clip);
    EXPECT_NE(first.privateData(), second.privateData());
    first.announce(timeOf(1), yuy3());
    EXPECT_EQ(second.flush(), aiNoError);
    first.collect(timeOf(1), yuy3());
    EXPECT_EQ(logged("REQUEST: ERROR: Frame not found: 1, frameTime: 10160640000"), 0);
    first.close();
    expectFrame(second, clip, 3);
}

}  // namespace
