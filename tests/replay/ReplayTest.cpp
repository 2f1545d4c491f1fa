// Replaying the plug-in's logs.
#include "LoadedPlugin.h"

#include "hostkit/sessions/AsyncSession.h"

using hostkit::ClipSession;
using hostkit::ImporterSession;
using programs::Sample;
using recording::kTicksPerFrame;
using recording::Made;
using Texts = std::vector<std::string>;

namespace {

const std::vector<std::string> kTwoSounds = {"--type", "2Y8Q", "--size", "16x8", "--frames", "4", "--audio",
                                             "pcm16:2:48000", "--audio", "float32:1:48000"};

Texts from(const Texts& texts, const std::string& first) {
    return {std::find(texts.begin(), texts.end(), first), texts.end()};
}

TEST(Replay, MakesEveryCallForAClip) {
    const Sample sample(kTwoSounds);
    const std::string log = recording::record([&](ImporterSession& session) {
        recording::playClip(session, sample.path());
    });
    LoadedPlugin plugin;
    const std::vector<Made> calls = plugin.replay(log, {sample.path()});
    EXPECT_EQ(recording::differencesOf(calls), Texts{});
    EXPECT_EQ(recording::skippedOf(calls), Texts{});
    EXPECT_EQ(recording::textsOf(calls),
              (Texts{"imInit", "imGetIndFormat 0", "imGetIndFormat 1", "imGetSubTypeNames AVIV", "imGetSupports8",
                     "imOpenFile8 sample.avi, stream 0", "imGetInfo8 sample.avi, stream 0",
                     "imGetInfo8 sample.avi, stream 1", "imGetAudioChannelLayout sample.avi",
                     "imImportAudio7 sample.avi, 100 sample frames from 0",
                     "imImportAudio7 sample.avi, 50 sample frames from -1", "imGetInfo8 sample.avi, stream 0",
                     "imGetIndPixelFormat sample.avi, index 0", "imGetIndPixelFormat sample.avi, index 1",
                     "imGetIndPixelFormat sample.avi, index 2", "imGetIndPixelFormat sample.avi, index 3",
                     "imGetIndPixelFormat sample.avi, index 4", "imAnalysis sample.avi, 300 bytes",
                     "imDataRateAnalysis sample.avi, 0 bytes", "imDataRateAnalysis sample.avi, 32 bytes",
                     "imGetSourceVideo sample.avi, time 0, 0 x 0 yuy2",
                     "imGetSourceVideo sample.avi, time 10160640000, 16 x 8 uyv7, 0 x 0 yuy2",
                     "imGetSourceVideo sample.avi, time 10160640000000, no formats",
                     "imGetSourceVideo sample.avi, time 0, no formats", "imCreateAsyncImporter sample.avi",
                     "aiInitiateAsyncRead sample.avi, time 0, 0 x 0 yuy2",
                     "aiInitiateAsyncRead sample.avi, time 20321280000, 16 x 8 uyv7",
                     "aiGetFrame sample.avi, time 20321280000, 16 x 8 uyv7",
                     "aiGetFrame sample.avi, time 10160640000, 0 x 0 yuy2",
                     "aiGetFrame sample.avi, time 10160640000000, no formats", "aiFlush sample.avi",
                     "aiClose sample.avi", "imQuietFile sample.avi", "imOpenFile8 sample.avi, stream 0",
                     "imCloseFile sample.avi", "imShutdown"}));
}

TEST(Replay, AChangedResultIsTheOnlyDifference) {
    const Sample sample(kTwoSounds);
    const std::string log = recording::record([&](ImporterSession& session) {
        recording::playClip(session, sample.path());
    });
    LoadedPlugin plugin;
    const std::string changed = recording::replaced(log, "    [imFrameNotFound] (28)", "    [imFrameNotFound] (27)");
    EXPECT_EQ(recording::differencesOf(plugin.replay(changed, {sample.path()})),
              Texts{"imGetSourceVideo sample.avi, time 10160640000000, no formats: 27, now 28"});
}

TEST(Replay, AChangedClipHasOtherResults) {
    const Sample sample(kTwoSounds);
    const std::string log = recording::record([&](ImporterSession& session) {
        ClipSession clip(session, sample.path());
        clip.open();
        clip.info(0);
        clip.close();
    });
    const fakes::TemporaryFile text(u8"other/sample.avi", "no pictures in here");
    LoadedPlugin plugin;
    EXPECT_EQ(recording::differencesOf(plugin.replay(log, {text.path()})),
              Texts{"imGetInfo8 sample.avi, stream 0: 18, now 2"});
}

TEST(Replay, FilesAreDistinguished) {
    const Sample sample(kTwoSounds);
    const std::filesystem::path other = sample.beside("other.avi");
    std::filesystem::copy_file(sample.path(), other);
    const std::string log = recording::record([&](ImporterSession& session) {
        ClipSession first(session, sample.path());
        ClipSession second(session, other);
        first.open();
        second.open();
        first.info(1);
        second.info(0);
        first.close();
        second.close();
    });
    const Texts start = {"imOpenFile8 sample.avi, stream 0", "imOpenFile8 other.avi, stream 0",
                         "imGetInfo8 sample.avi, stream 1", "imGetInfo8 other.avi, stream 0",
                         "imCloseFile sample.avi",          "imCloseFile other.avi",
                         "imShutdown"};
    LoadedPlugin plugin;
    const std::vector<Made> both = plugin.replay(log, {other, sample.path()});
    EXPECT_EQ(from(recording::textsOf(both), start.front()), start);
    EXPECT_EQ(recording::skippedOf(both), Texts{});
    EXPECT_EQ(recording::differencesOf(both), Texts{});
    const std::string reason = ": no file was given for '" + sample.text() + "'";
    EXPECT_EQ(recording::skippedOf(plugin.replay(log, {other})),
              (Texts{start[0] + reason, "imGetInfo8 sample.avi" + reason, start[4] + reason}));
}

TEST(Replay, AFileThatIsOpenTwiceIsAnAssumption) {
    const Sample sample(kTwoSounds);
    const std::string log = recording::record([&](ImporterSession& session) {
        ClipSession first(session, sample.path());
        ClipSession second(session, sample.path());
        first.open();
        second.open();
        first.info(0);
        second.close();
        first.close();
    });
    LoadedPlugin plugin;
    const std::vector<Made> calls = plugin.replay(log, {sample.path()});
    EXPECT_EQ(recording::differencesOf(calls), Texts{});
    EXPECT_EQ(calls.at(7).assumed, Texts{"the opening of the file that came last"});
    EXPECT_EQ(calls.at(9).assumed, Texts{});        // the last close has no choice
}

TEST(Replay, FilesLeftOpenByTheLogAreClosed) {
    const Sample sample(kTwoSounds);
    std::string log = recording::record([&](ImporterSession& session) {
        recording::playClip(session, sample.path());
    });
    log.resize(log.find("[OnFlush]"));
    LoadedPlugin plugin;        // its destructor checks for leaks
    const replay::RecordedLog read = recording::read(log);
    const replay::FileMap files(read, {sample.path()});
    hostkit::ImporterSession session(plugin.host(), plugin.entry());
    replay::Replayer replayer(session, files, read);
    for (const replay::LoggedCall& call : read.calls) {
        replay::Step step = replayer.step(call);
        ASSERT_FALSE(step.skipped) << *step.skipped;
        step.run();
    }
    EXPECT_EQ(replayer.finish(), (Texts{"1 asynchronous importer left open by the log: closed.",
                                        "1 file left open by the log: closed.",
                                        "No shutdown in the log: the plug-in was shut down."}));
}

TEST(Replay, CallsWithoutAFileAreMadeWithoutAFile) {
    const std::string log = recording::record([&](ImporterSession& session) {
        ClipSession nobody(session, "");
        nobody.info(0);
        nobody.frame(0, {});
        nobody.audio(0, 10, 2);
        nobody.channelLayout();
        nobody.quiet();
        session.call(imCloseFile, nullptr, nullptr);
        session.call(imGetPrefs8);
        session.call(77);
    });
    LoadedPlugin plugin;
    const std::vector<Made> calls = plugin.replay(log, {});
    EXPECT_EQ(recording::differencesOf(calls), Texts{});
    EXPECT_EQ(recording::skippedOf(calls), Texts{});
    EXPECT_EQ(calls.at(5).text, "imGetInfo8 without a file, stream 0");
    EXPECT_EQ(calls.at(5).now, imOtherErr);
    EXPECT_EQ(calls.at(12).text, "???? (77)");
    EXPECT_EQ(calls.at(12).now, imUnsupported);
}

TEST(Replay, ExceptionsOfThePluginRecur) {
    const Sample sample(kTwoSounds);
    const std::string log = recording::record([&](ImporterSession& session) {
        ClipSession clip(session, sample.path());
        clip.open();
        EXPECT_EQ(clip.pixelFormat(0).result, 99);
        EXPECT_EQ(clip.frame(0, {}).result, 99);
        EXPECT_EQ(clip.audio(0, 10, 2).result, 99);
        clip.close();
    });
    LoadedPlugin plugin;
    const std::vector<Made> calls = plugin.replay(log, {sample.path()});
    EXPECT_EQ(recording::differencesOf(calls), Texts{});
    EXPECT_EQ(recording::skippedOf(calls), Texts{});
    EXPECT_EQ(calls.at(7).assumed, (Texts{"time 0", "no frame formats"}));
}

TEST(Replay, ARequestWithoutOutFrameStaysWithout) {
    const Sample sample(kTwoSounds);
    const std::string log = recording::record([&](ImporterSession& session) {
        ClipSession clip(session, sample.path());
        clip.open();
        clip.info(0);
        std::vector<imFrameFormat> none;
        session.exchange(imGetSourceVideo, clip.frameRecord(0, none, nullptr), nullptr);
        clip.close();
    });
    LoadedPlugin plugin;
    const std::vector<Made> calls = plugin.replay(log, {sample.path()});
    EXPECT_EQ(calls.at(7).text, "imGetSourceVideo sample.avi, time 0, no formats, no place for a frame");
    EXPECT_EQ(calls.at(7).now, imOtherErr);
}

TEST(Replay, FramesUseTheImporterTheyWereAnnouncedTo) {
    const Sample sample(kTwoSounds);
    const std::filesystem::path other = sample.beside("other.avi");
    std::filesystem::copy_file(sample.path(), other);
    const std::string log = recording::record([&](ImporterSession& session) {
        const imFrameFormat format{0, 0, PrPixelFormat_YUYV_422_8u_601};
        ClipSession first(session, sample.path());
        ClipSession second(session, other);
        first.open();
        second.open();
        hostkit::AsyncSession one(session, first);
        one.create();
        one.announce(kTicksPerFrame, {format});
        hostkit::AsyncSession two(session, second);
        two.create();
        one.get(kTicksPerFrame, {format});
    });
    LoadedPlugin plugin;
    const std::vector<Made> calls = plugin.replay(log, {sample.path(), other});
    EXPECT_EQ(recording::differencesOf(calls), Texts{});
    EXPECT_EQ(calls.at(10).text, "aiGetFrame sample.avi, time 10160640000, 0 x 0 yuy2");
    EXPECT_EQ(calls.at(10).assumed, Texts{"which asynchronous importer"});
}

TEST(Replay, SuitesThatTheHostRefusedAreRecognised) {
    const auto refused = [](const std::string& messages) {
        return replay::refusedSuitesOf(recording::read("[2026-11-16 00:44:11] [7] ----------------------\n"
                                                       "[2026-11-16 00:44:11] [7] [imGetInfo8] (37)\n" + messages));
    };
    const std::string line = "[2026-11-16 00:44:11] [7] Acquiring suite: ";
    const std::string never = line + "r: -2, v: 6, n: 'Premiere PPix Cache Suite', ptr: 0000000000000000\n";
    const std::string given = line + "r: 0, v: 6, n: 'Premiere PPix Cache Suite', ptr: 000000000000AA00\n";
    EXPECT_EQ(refused(never), (std::vector<hostkit::SuiteId>{{"Premiere PPix Cache Suite", 6}}));
    EXPECT_EQ(refused(never + given), std::vector<hostkit::SuiteId>{});
    EXPECT_EQ(refused(given), std::vector<hostkit::SuiteId>{});
}

}  // namespace
