// Every fault that the probe knows is committed once, and raises its own complaint and no other.
#include "ProbeRun.h"
#include "WrongCase.h"

#include <algorithm>

namespace {

WrongCases allCases() {
    WrongCases all;
    for (const WrongCases& cases : {wrongCallOrders(), wrongRecords(), wrongTables(), wrongMemory(), wrongFrames(),
                                    wrongSuites(), wrongSound(), wrongAsyncCalls()}) {
        all.insert(all.end(), cases.begin(), cases.end());
    }
    return all;
}

std::vector<std::string> complaintsAbout(const std::function<void(PlayedHost&)>& play,
                                         const std::string& expectations = {}) {
    const ProbeRun run(expectations);
    {
        auto library = std::make_unique<hostkit::PluginLibrary>(probePath());
        PlayedHost host(library->entry());
        play(host);
        library.reset();        // the host's tables outlive the library
    }
    const ProbeReport report = run.report();
    EXPECT_TRUE(report.isWhole);
    EXPECT_GT(report.calls, 0);
    return report.complaints;
}

// Returns whether a text is the sentence with any details.
bool isOfForm(const std::string& text, const std::string& sentence) {
    const std::size_t open = sentence.find('{');
    if (open == std::string::npos) {
        return text == sentence;
    }
    if (text.compare(0, open, sentence, 0, open) != 0) {
        return false;
    }
    const std::string rest = sentence.substr(sentence.find('}') + 1);
    for (std::size_t at = open; at <= text.size(); ++at) {
        if (isOfForm(text.substr(at), rest)) {
            return true;
        }
    }
    return false;
}

class WrongHost : public testing::TestWithParam<WrongCase> {};

TEST_P(WrongHost, RaisesItsOwnComplaintAndNoOther) {
    EXPECT_EQ(complaintsAbout(GetParam().play, GetParam().expectations),
              std::vector<std::string>{GetParam().complaint});
}

INSTANTIATE_TEST_SUITE_P(Each, WrongHost, testing::ValuesIn(allCases()),
                         [](const auto& instance) { return instance.param.name; });

TEST(WrongHosts, EachRaisesItsSentence) {
    for (const WrongCase& each : allCases()) {
        EXPECT_TRUE(isOfForm(each.complaint, textOf(each.sentence))) << each.name;
    }
}

TEST(WrongHosts, EverySentenceIsProvoked) {
    const WrongCases cases = allCases();
    for (std::size_t i = 0; i < static_cast<std::size_t>(hostprobe::Sentence::Count); ++i) {
        const auto sentence = static_cast<hostprobe::Sentence>(i);
        EXPECT_TRUE(std::any_of(cases.begin(), cases.end(),
                                [=](const WrongCase& each) { return each.sentence == sentence; }))
            << textOf(sentence);
    }
}

TEST(PlayedHost, RaisesNoComplaintUnspoiled) {
    EXPECT_EQ(complaintsAbout([](PlayedHost& host) { host.play(); }, expectationsFor("editor-11")),
              std::vector<std::string>{});
}

TEST(PlayedHost, RaisesNoComplaintInVersion23) {
    EXPECT_EQ(complaintsAbout([](PlayedHost& host) {
                  host.parms.imInterfaceVer = IMPORTMOD_VERSION_23;
                  host.play();
              }, "version=23"),
              std::vector<std::string>{});
}

TEST(Report, IsNotWholeIfTheProbeIsNeverCalled) {
    const ProbeRun run("");
    { const hostkit::PluginLibrary library(probePath()); }
    EXPECT_FALSE(run.report().isWhole);
}

TEST(Report, CountsEachCallOfBothEntries) {
    const ProbeRun run("");
    {
        const hostkit::PluginLibrary library(probePath());
        PlayedHost host(library.entry());
        host.begin();           // 4: init, format, open, info
        host.createAsync();
        host.flush();
        host.closeAsync();
        host.end();             // 2
    }
    EXPECT_EQ(run.report().calls, 9);
}

}  // namespace
