// Every bad manner that the host promises to notice, shown by an importer that has it.
#include "FakeClip.h"

using namespace hostkit;

namespace {

using Sentences = std::vector<std::string>;

// What the host has to say after a whole life of a clip with these words.
Sentences problemsWith(const std::string& words) {
    const fakes::FakeClip file(words);
    Host host;
    const PluginLibrary library(fakes::importerPath());
    ImporterSession session(host, library.entry());
    session.start();
    {
        ClipSession clip(session, file.path());
        clip.open();
        clip.infos();
        clip.analysis();
        clip.dataRate();
        clip.channelLayout();
        clip.audio(0, 100, 2);
        clip.frame(0, {{0, 0, PrPixelFormat_BGRA_4444_8u}});
    }
    session.shutdown();
    return host.problems();
}

TEST(BadImporter, AGoodOneIsFoundGood) { EXPECT_EQ(problemsWith(""), Sentences{}); }

TEST(BadImporter, ASuiteThatIsNotReleased) {
    EXPECT_EQ(problemsWith("leak-suite"),
              Sentences{"The suite 'Premiere PPix Creator Suite' version 1 was acquired 1 time and released 0 times."});
}

TEST(BadImporter, AFrameThatIsNotHandedOver) {
    EXPECT_EQ(problemsWith("leak-frame"), Sentences{"A frame (bgra, 8 x 6) was never disposed."});
}

TEST(BadImporter, AFrameWrittenPastItsEnd) {
    EXPECT_EQ(problemsWith("overrun-frame"), Sentences{"A frame (bgra, 8 x 6) was overrun."});
}

TEST(BadImporter, ARecordWrittenPastItsEnd) {
    EXPECT_EQ(problemsWith("overrun-record"), Sentences{"Selector 37 wrote outside its record of 5373 bytes."});
}

TEST(BadImporter, AFieldThatIsNotTheImporters) {
    EXPECT_EQ(problemsWith("unlisted-field"),
              Sentences{"Selector 37 wrote bytes of its record that are not its own: 32."});
}

TEST(BadImporter, SoundWrittenPastItsBuffer) {
    EXPECT_EQ(problemsWith("overrun-sound"), (Sentences{"A channel buffer of 100 samples was overrun.",
                                                        "A channel buffer of 100 samples was overrun."}));
}

TEST(BadImporter, TextWrittenPastItsBuffer) {
    EXPECT_EQ(problemsWith("overrun-text"),
              Sentences{"The analysis text was written past its buffer of 65536 bytes."});
}

TEST(BadImporter, AnExceptionThatLeavesTheEntryIsGivenAsAResult) {
    const fakes::FakeClip file("throw");
    Host host;
    const PluginLibrary library(fakes::importerPath());
    ImporterSession session(host, library.entry());
    ClipSession clip(session, file.path());
    clip.open();
    EXPECT_EQ(clip.frame(0, {{0, 0, PrPixelFormat_BGRA_4444_8u}}).result, kEscapedException);
    EXPECT_EQ(session.escapedText(), "no pictures today");
}

}  // namespace
