#include "importhost/validate/checks/host/RefusedSuites.h"

#include "importhost/validate/checks/stage/ErrorEvents.h"
#include "importhost/validate/checks/stage/Scenario.h"

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

bool isNeededBy(const SuiteRow& suite, const ScenarioStep& step) {
    return step.isAsync ? suite.isNeededForAsyncFrames
                        : std::ranges::find(suite.neededBy, step.selector) != suite.neededBy.end();
}

std::vector<StepOutcome> usualOutcomes(PlayedPlugin& plugin, const ScenarioClip& facts) {
    std::vector<StepOutcome> outcomes;
    Scenario scenario(plugin, facts);
    for (const ScenarioStep& step : scenario.steps()) {
        outcomes.push_back(step.act());
    }
    return outcomes;
}

void expectSame(CheckRun& run, const ScenarioStep& step, const StepOutcome& found, const StepOutcome& usual,
                const std::string& than) {
    if (run.expectEqual("the answer", step.resultText(found.result), step.resultText(usual.result))) {
        run.expect(found.content == usual.content, "what was delivered differs from what " + than);
    }
}

// --- refused-suites ---------------------------------------------------------------------------------------------

void expectRefusal(CheckRun& run, const SuiteRow& suite, const ScenarioStep& step, const StepOutcome& found,
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

// `refused` is the suite in the version that the plug-in uses, or in every version.
void playWithout(CheckRun& run, PlayedPlugin& plugin, const SuiteRow& suite, const SuiteId& refused,
                 const ScenarioClip& facts, const std::vector<StepOutcome>& usual) {
    hostkit::Host& host = plugin.host();
    Scenario scenario(plugin, facts);
    for (std::size_t i = 0; i < usual.size() && !run.hasFailed(); ++i) {
        const ScenarioStep& step = scenario.steps()[i];
        run.step(refusalText(refused).append(", ").append(step.name));
        host.refuse({refused});
        const std::size_t eventsBefore = host.errorEvents().size();
        const StepOutcome found = step.act();
        host.refuse({});
        expectNoOtherVersion(run, host, suite);
        if (found != usual[i]) {
            expectRefusal(run, suite, step, found, eventsSince(host, eventsBefore));
            scenario.prepareAnotherTry(step);
            expectSame(run, step, step.act(), usual[i], "was delivered before, tried again when it was granted");
        }
    }
    run.step("");
}

}  // namespace

void refusedSuites(CheckRun& run) {
    PlayedPlugin plugin(run);
    ScenarioClip facts;
    {
        const auto clip = firstClip(run, plugin, Need::Pictures);
        facts = scenarioClipOf(run, plugin, *clip);
    }
    const std::vector<StepOutcome> usual = usualOutcomes(plugin, facts);
    for (const SuiteRow& suite : kSuites) {
        if (!run.hasFailed()) {
            playWithout(run, plugin, suite, {suite.name, hostkit::kEveryVersion}, facts, usual);
            playWithout(run, plugin, suite, {suite.name, suite.version}, facts, usual);
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

void playAs(CheckRun& run, const hostkit::HostProfile& profile, const Clip& clip,
            const std::vector<StepOutcome>& usual) {
    run.step(clip.name + ", host '" + profile.name + "'");
    PlayedPlugin plugin(run, profile);
    OpenClip open(plugin, clip);
    if (!run.expect(open.isDescribed() && open.has(Need::Pictures) && !open.formats().empty(),
                    "the plug-in does not open it for this host, or has no pictures for it")) {
        return;
    }
    Scenario scenario(plugin, scenarioClipOf(run, plugin, open));
    for (std::size_t i = 0; i < usual.size(); ++i) {
        const ScenarioStep& step = scenario.steps()[i];
        run.step(clip.name + ", host '" + profile.name + "', " + step.name);
        expectSame(run, step, step.act(), usual[i], "the host '" + hostkit::hostProfiles().front().name + "' got");
    }
}

}  // namespace

void hostProfiles(CheckRun& run) {
    const Clip* clip = nullptr;
    std::vector<StepOutcome> usual;
    {
        PlayedPlugin plugin(run);
        const auto open = firstClip(run, plugin, Need::Pictures);
        clip = &open->clip();
        usual = usualOutcomes(plugin, scenarioClipOf(run, plugin, *open));
    }
    for (const hostkit::HostProfile& profile : hostkit::hostProfiles()) {
        if (hasWhatIsNeeded(profile)) {
            playAs(run, profile, *clip, usual);
        }
    }
    run.step("");
}

}  // namespace importhost::validate
