#include "importhost/validate/checks/host/RefusedSuites.h"

#include "importhost/validate/checks/stage/ErrorEvents.h"
#include "importhost/validate/checks/stage/Playthrough.h"

#include <algorithm>
#include <span>

namespace importhost::validate {

namespace {

using hostkit::SuiteId;

constexpr csSDK_int32 kNeedFrames[] = {imGetSourceVideo};
constexpr csSDK_int32 kNeedTime[] = {imGetInfo8, imCreateAsyncImporter};
constexpr csSDK_int32 kNeedSound[] = {imImportAudio7};
constexpr csSDK_int32 kNeedFormats[] = {imInit};

// A suite, and the calls that cannot do without it.
struct SuiteRow {
    const char* name;
    csSDK_int32 version;
    std::span<const csSDK_int32> neededBy;
    bool isNeededForAsyncFrames = false;
};

const SuiteRow kSuites[] = {
    {kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion, kNeedFrames, true},
    {kPrSDKPPixCacheSuite, kPrSDKPPixCacheSuiteVersion, {}},
    {kPrSDKPPixSuite, kPrSDKPPixSuiteVersion, kNeedFrames, true},
    {kPrSDKTimeSuite, kPrSDKTimeSuiteVersion, kNeedTime},
    {kPrSDKImageProcessingSuite, kPrSDKImageProcessingSuiteVersion, kNeedFormats},
    {kPrSDKAudioSuite, kPrSDKAudioSuiteVersion, kNeedSound},
    {kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3, {}},
};

bool isNeededBy(const SuiteRow& suite, const Step& step) {
    return step.isAsync ? suite.isNeededForAsyncFrames
                        : std::ranges::find(suite.neededBy, step.selector) != suite.neededBy.end();
}

// --- refused-suites ---------------------------------------------------------------------------------------------

void expectRefusal(CheckRun& run, const SuiteRow& suite, const Step& step, const Outcome& found,
                   const std::vector<hostkit::ErrorEvent>& events) {
    if (!run.expect(isNeededBy(suite, step), "answered with " + step.resultText(found.result) +
                                                 ", although it can do without that suite") ||
        !run.expectEqual("the answer", step.resultText(found.result), step.resultText(kExceptionResult))) {
        return;
    }
    if (!step.isAsync && step.selector != imInit) {
        expectErrorEvent(run, events, step.selector,
                         std::string("Could not acquire suite: '")
                             .append(suite.name)
                             .append("', ver: ")
                             .append(std::to_string(suite.version)));
    }
}

std::string refusalText(const SuiteId& refused) {
    const std::string suite = std::string("without the '").append(refused.name).append("'");
    return refused.version == hostkit::kEveryVersion
               ? suite
               : std::string(suite).append(" of version ").append(std::to_string(refused.version));
}

// A table of another version may differ from what the plug-in knows.
void expectNoOtherVersion(CheckRun& run, hostkit::Host& host, const SuiteRow& suite) {
    for (const auto& [id, balance] : host.suites()) {
        run.expect(id.name != suite.name || id.version == suite.version,
                   "takes version " + std::to_string(id.version) + " of it instead");
    }
}

// The first clip with pictures and its answers to a host that refuses nothing.
PlayedClip usualClip(PlayedPlugin& plugin) {
    PlayedClip clip = playedClipOf(*firstClip(plugin, Need::Pictures));
    clip.usual = Playthrough(plugin, clip).takeAll();
    return clip;
}

// `refused` is the suite in the version that the plug-in uses, or in every version.
void playWithout(PlayedPlugin& plugin, const SuiteRow& suite, const SuiteId& refused, const PlayedClip& clip) {
    CheckRun& run = plugin.run();
    hostkit::Host& host = plugin.host();
    Playthrough play(plugin, clip);
    for (std::size_t i = 0; i < clip.usual.size() && !run.hasFailed(); ++i) {
        const Step& step = play.steps()[i];
        run.step(refusalText(refused).append(", ").append(step.name));
        host.refuse({refused});
        const std::size_t eventsBefore = host.errorEvents().size();
        const Outcome found = step.take();
        host.refuse({});
        expectNoOtherVersion(run, host, suite);
        if (found != clip.usual[i]) {
            expectRefusal(run, suite, step, found, eventsSince(host, eventsBefore));
            play.prepareAnotherTry(step);
            expectUsual(run, "tried again when it was granted", step, step.take(), clip.usual[i]);
        }
    }
    run.step("");
}

}  // namespace

void refusedSuites(CheckRun& run) {
    PlayedPlugin plugin(run);
    const PlayedClip clip = usualClip(plugin);
    for (const SuiteRow& suite : kSuites) {
        if (!run.hasFailed()) {
            playWithout(plugin, suite, {suite.name, hostkit::kEveryVersion}, clip);
            playWithout(plugin, suite, {suite.name, suite.version}, clip);
        }
    }
    plugin.finish();
}

// --- host-profiles ----------------------------------------------------------------------------------------------

namespace {

// Of the hosts that refuse something, those whose suites nobody needs.
bool hasWhatIsNeeded(const hostkit::HostProfile& profile) {
    return std::ranges::all_of(profile.refusedSuites, [](const SuiteId& suite) {
        return suite.name == kPrSDKPPixCacheSuite || suite.name == kPrSDKErrorSuite;
    });
}

void playAs(CheckRun& run, const hostkit::HostProfile& profile, const PlayedClip& usual) {
    run.step(usual.name() + ", host '" + profile.name + "'");
    PlayedPlugin plugin(run, profile);
    PlayedClip clip;
    {
        OpenClip open(plugin, usual.clip());
        if (!run.expect(open.has(Need::Pictures),
                        "the plug-in does not open it for this host, or has no pictures for it")) {
            return;
        }
        clip = playedClipOf(open);
    }
    Playthrough play(plugin, clip);
    for (std::size_t i = 0; i < usual.usual.size(); ++i) {
        const Step& step = play.steps()[i];
        run.step(usual.name() + ", host '" + profile.name + "', " + step.name);
        expectUsual(run, "the answer", step, step.take(), usual.usual[i]);
    }
}

}  // namespace

void hostProfiles(CheckRun& run) {
    PlayedClip usual;
    {
        PlayedPlugin plugin(run);
        usual = usualClip(plugin);
    }
    for (const hostkit::HostProfile& profile : hostkit::hostProfiles()) {
        if (hasWhatIsNeeded(profile)) {
            playAs(run, profile, usual);
        }
    }
    run.step("");
}

}  // namespace importhost::validate
