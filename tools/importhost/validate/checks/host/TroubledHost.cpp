#include "importhost/validate/checks/host/TroubledHost.h"

#include "importhost/validate/checks/stage/ErrorEvents.h"

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

namespace importhost::validate {

namespace {

using hostkit::HostCall;

constexpr csSDK_int32 kHostFailure = -1;
constexpr std::size_t kCalls = static_cast<std::size_t>(HostCall::Count);

// The host's own, when it takes over a list that the plug-in gave it.
constexpr HostCall kCallsOfTheHost[] = {HostCall::GetPtrSize, HostCall::DisposePtr};

bool isOneOf(std::span<const HostCall> calls, HostCall call) { return std::ranges::find(calls, call) != calls.end(); }

// The call that gets into trouble, and how many of its kind there were before it was planned.
struct PlannedTrouble {
    HostCall call;
    int nth;
    int countBefore;
};

// One trouble to come.
struct Strike {
    std::size_t round;          // how many there are of its kind before it
    HostCall call;
    int nth;
};

// One clip, and all the trouble that the plan has for it.
class TroubledClip {
public:
    // Plays the clip undisturbed, for the comparison. The clip must have pictures.
    TroubledClip(CheckRun& run, const TroublePlan& plan, const Clip& clip);

    // Stops at the first demand that is not met: more of the same would only say the same.
    void play();

private:
    std::vector<Strike> strikes();
    bool playWith(PlayedPlugin& plugin, HostCall call, int nth);
    void plan(PlayedPlugin& plugin, HostCall call, int nth);
    bool takeStep(Playthrough& play, PlayedPlugin& plugin, std::size_t index, const PlannedTrouble& disturbance);
    bool tryAgain(Playthrough& play, PlayedPlugin& plugin, std::size_t index);
    bool hasCleanBooks(PlayedPlugin& plugin, HostCall call);
    int usualCount(HostCall call) const { return m_calls[static_cast<std::size_t>(call)]; }
    void noteFirsts(hostkit::Host& host, const Step& step, std::set<std::tuple<std::size_t, bool, int>>& seen);
    std::set<int> choose(HostCall call);
    std::string describe(HostCall call, int nth) const;

    CheckRun& m_run;
    const TroublePlan& m_plan;
    const Clip& m_clip;
    PlayedClip m_facts;
    std::array<int, kCalls> m_calls = {};
    std::array<std::set<int>, kCalls> m_firsts = {};    // of each call, the first in every kind of step
};

TroubledClip::TroubledClip(CheckRun& run, const TroublePlan& plan, const Clip& clip)
    : m_run(run), m_plan(plan), m_clip(clip) {
    m_run.step(m_clip.name + ", nothing in trouble");
    PlayedPlugin plugin(m_run);
    {
        OpenClip open(plugin, m_clip);
        m_facts = playedClipOf(open);
    }
    plugin.host().calls().clear();
    Playthrough play(plugin, m_facts);
    std::set<std::tuple<std::size_t, bool, int>> seen;
    for (const Step& step : play.steps()) {
        m_facts.usual.push_back(step.take());
        noteFirsts(plugin.host(), step, seen);
    }
}

void TroubledClip::noteFirsts(hostkit::Host& host, const Step& step,
                              std::set<std::tuple<std::size_t, bool, int>>& seen) {
    for (std::size_t i = 0; i < kCalls; ++i) {
        const int count = host.calls().count(static_cast<HostCall>(i));
        if (count > m_calls[i] && seen.emplace(i, step.isAsync, step.selector).second) {
            m_firsts[i].insert(m_calls[i] + 1);
        }
        m_calls[i] = count;
    }
}

// One of each call before the second of any: when time runs out none is left out.
std::vector<Strike> TroubledClip::strikes() {
    std::vector<Strike> strikes;
    for (std::size_t i = 0; i < kCalls; ++i) {
        const HostCall call = static_cast<HostCall>(i);
        const bool isWanted = m_plan.only.empty() || isOneOf(m_plan.only, call);
        if (isWanted && !isOneOf(m_plan.spared, call) && !isOneOf(kCallsOfTheHost, call) && usualCount(call) > 0) {
            std::size_t round = 0;
            for (const int nth : choose(call)) {
                strikes.push_back({round++, call, nth});
            }
        }
    }
    std::ranges::stable_sort(strikes, {}, &Strike::round);
    return strikes;
}

void TroubledClip::play() {
    const std::vector<Strike> all = strikes();
    std::unique_ptr<PlayedPlugin> plugin;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!m_run.hasTime()) {
            m_run.step(m_clip.name);
            m_run.note("time is short: the host got into " + std::to_string(i) + " of " + std::to_string(all.size()) +
                       " troubles");
            break;
        }
        if (!plugin) {
            plugin = std::make_unique<PlayedPlugin>(m_run);
        }
        const bool isGood = playWith(*plugin, all[i].call, all[i].nth);
        // Books that the host itself spoiled are of no use for the next one.
        if (!isGood || givesBack(all[i].call)) {
            plugin->finishAndTell();
            plugin.reset();
        }
        if (!isGood) {
            return;
        }
    }
    m_run.step("");
}

std::set<int> TroubledClip::choose(HostCall call) {
    std::set<int> chosen = m_firsts[static_cast<std::size_t>(call)];
    const auto count = static_cast<std::size_t>(usualCount(call));
    const std::size_t wanted = std::min(count, chosen.size() + static_cast<std::size_t>(m_plan.moreOfEachCall));
    while (chosen.size() < wanted) {
        chosen.insert(1 + static_cast<int>(m_run.below(count)));
    }
    return chosen;
}

std::string TroubledClip::describe(HostCall call, int nth) const {
    const std::string which =
        std::string("call ").append(std::to_string(nth)).append(" of ").append(std::to_string(usualCount(call)));
    switch (m_plan.trouble) {
        case Trouble::Fails: return std::string(hostkit::callName(call)) + " fails at " + which;
        case Trouble::FailsFromThenOn: return std::string(hostkit::callName(call)) + " fails from " + which + " on";
        default: return std::string(hostkit::callName(call)) + " throws at " + which;
    }
}

void TroubledClip::plan(PlayedPlugin& plugin, HostCall call, int nth) {
    hostkit::FaultPlan& faults = plugin.host().faults();
    switch (m_plan.trouble) {
        case Trouble::Fails: faults.fail(call, kHostFailure, nth); break;
        case Trouble::FailsFromThenOn: faults.fail(call, kHostFailure, nth, hostkit::FaultPlan::kForEver); break;
        default: faults.throwFrom(call, kThrownText, nth); break;
    }
}

bool TroubledClip::playWith(PlayedPlugin& plugin, HostCall call, int nth) {
    const std::string what = m_clip.name + ", " + describe(call, nth);
    const PlannedTrouble disturbance{call, nth, plugin.host().calls().count(call)};
    Playthrough play(plugin, m_facts);
    plan(plugin, call, nth);
    bool isGood = true;
    for (std::size_t i = 0; i < play.steps().size() && isGood; ++i) {
        m_run.step(what + ", " + play.steps()[i].name);
        isGood = takeStep(play, plugin, i, disturbance);
    }
    plugin.host().faults().clear();
    return isGood;
}

bool TroubledClip::takeStep(Playthrough& play, PlayedPlugin& plugin, std::size_t index,
                            const PlannedTrouble& disturbance) {
    const Step& step = play.steps()[index];
    hostkit::Host& host = plugin.host();
    const auto callsMade = [&] { return host.calls().count(disturbance.call) - disturbance.countBefore; };
    const bool wasLater = callsMade() < disturbance.nth;
    const std::size_t eventsBefore = host.errorEvents().size();

    TroubledStep taken{step, step.take(), m_facts.usual[index]};
    taken.struck = wasLater && callsMade() >= disturbance.nth;
    taken.events = eventsSince(host, eventsBefore);
    taken.escapedText = plugin.session().escapedText();
    if (!isAllowed(m_run, m_plan, disturbance.call, taken)) {
        return false;
    }
    if (taken.found != taken.usual && !tryAgain(play, plugin, index)) {
        return false;
    }
    return step.isAsync || step.selector != imShutdown || hasCleanBooks(plugin, disturbance.call);
}

// The host is in order again, and so must be what the editor sees: with the same clip, that was there all the time.
bool TroubledClip::tryAgain(Playthrough& play, PlayedPlugin& plugin, std::size_t index) {
    plugin.host().faults().clear();
    const Step& step = play.steps()[index];
    play.prepareAnotherTry(step);
    return expectUsual(m_run, "tried again when the host was in order", step, step.take(), m_facts.usual[index]);
}

bool TroubledClip::hasCleanBooks(PlayedPlugin& plugin, HostCall call) {
    const std::vector<std::string> problems = plugin.host().problems();
    const std::size_t allowed = givesBack(call) ? 1 : 0;
    for (std::size_t i = allowed; i < problems.size(); ++i) {
        m_run.fail("after the shutdown: " + problems[i]);
    }
    return problems.size() <= allowed;
}

}  // namespace

void playInTrouble(CheckRun& run, const TroublePlan& plan) {
    std::vector<const Clip*> clips;
    {
        PlayedPlugin plugin(run);
        forEachClip(plugin, Need::Pictures, [&](OpenClip& open) {
            const bool isFirst = clips.empty();
            const bool hasMoreSounds = open.infoResult() == imIterateStreams && clips.size() < 2 && run.level() >= 5;
            if (isFirst || hasMoreSounds) {
                clips.push_back(&open.clip());
            }
        });
    }
    for (const Clip* clip : clips) {
        TroubledClip(run, plan, *clip).play();
    }
}

}  // namespace importhost::validate
