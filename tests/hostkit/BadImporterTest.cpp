// Every bad manner that the host must notice.
#include "FakeClip.h"

using namespace hostkit;

namespace {

using Sentences = std::vector<std::string>;

// Returns the host's problems after a whole life of a clip with these words.
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

struct BadManner {
    const char* name;
    const char* words;
    Sentences problems;
};

void PrintTo(const BadManner& each, std::ostream* out) { *out << each.name; }

const BadManner kBadManners[] = {
    {"None", "", {}},
    {"SuiteNotReleased", "leak-suite",
     {"The suite 'Premiere PPix Creator Suite' version 1 was acquired 1 time and released 0 times."}},
    {"FrameNotHandedOver", "leak-frame", {"A frame (bgra, 8 x 6) was never disposed."}},
    {"FrameOverrun", "overrun-frame", {"A frame (bgra, 8 x 6) was overrun."}},
    {"RecordOverrun", "overrun-record", {"Selector 37 wrote outside its record of 5373 bytes."}},
    {"HostsFieldWritten", "unlisted-field", {"Selector 37 wrote bytes of its record that are not its own: 32."}},
    {"SoundOverrun", "overrun-sound",
     {"A channel buffer of 100 samples was overrun.", "A channel buffer of 100 samples was overrun."}},
    {"TextOverrun", "overrun-text", {"The analysis text was written past its buffer of 65536 bytes."}},
};

class BadImporter : public testing::TestWithParam<BadManner> {};

TEST_P(BadImporter, IsNoticed) { EXPECT_EQ(problemsWith(GetParam().words), GetParam().problems); }

INSTANTIATE_TEST_SUITE_P(Each, BadImporter, testing::ValuesIn(kBadManners),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(BadImporters, ExceptionBecomesAResult) {
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
