// Slow or growing: warnings only. Machines differ, so the thresholds are generous.
#include "hostkit/system/ProcessSize.h"
#include "importhost/validate/checks/stage/OpenClip.h"
#include "importhost/validate/framework/Groups.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace importhost::validate {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kSlowOpenSeconds = 1.0;
constexpr double kSlowFrameSeconds = 1.0;
constexpr std::uint64_t kGrowthPerOpen = 20U << 10;     // bytes
constexpr std::uint64_t kGrowthAtAll = 4U << 20;        // bytes; less says nothing
constexpr std::uint64_t kMoreHandles = 8;
constexpr double kWarmUpSeconds = 5.0;

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

std::string secondsText(double seconds) {
    char text[32];
    std::snprintf(text, sizeof(text), "%.2f s", seconds);
    return text;
}

// --- opens-quickly ----------------------------------------------------------------------------------------------

void opensQuickly(CheckRun& run) {
    run.failNoMore();
    PlayedPlugin plugin(run);
    double slowest = 0.0;
    for (const Clip& clip : run.clips()) {
        run.step(clip.name);
        const auto start = Clock::now();
        const OpenClip open(plugin, clip);
        const double seconds = secondsSince(start);
        slowest = std::max(slowest, seconds);
        if (seconds > kSlowOpenSeconds) {
            run.warn("opening and describing it took " + secondsText(seconds));
        }
    }
    run.step("");
    run.note("the slowest took " + secondsText(slowest));
}

// --- first-frame-comes-quickly ----------------------------------------------------------------------------------

void firstFrameComesQuickly(CheckRun& run) {
    run.failNoMore();
    double slowest = 0.0;
    forEachClip(run, Need::Pictures, [&](OpenClip& clip) {
        clip.formats();
        const auto start = Clock::now();
        clip.frame(0);
        const double seconds = secondsSince(start);
        slowest = std::max(slowest, seconds);
        if (seconds > kSlowFrameSeconds) {
            run.warn("the first frame took " + secondsText(seconds));
        }
    });
    run.note("the slowest took " + secondsText(slowest));
}

// --- does-not-grow ----------------------------------------------------------------------------------------------

// As an editor does with a clip that is put on a timeline and taken off again.
void openOnce(PlayedPlugin& plugin, const Clip& clip) {
    OpenClip open(plugin, clip);
    if (open.has(Need::Pictures)) {
        open.frame(0);
    }
}

std::uint64_t growth(std::uint64_t before, std::uint64_t after) { return after > before ? after - before : 0; }

// What is made once and kept is made by then; a long file need not be opened so often for it.
void warmUp(const CheckRun& run, PlayedPlugin& plugin, const Clip& clip) {
    const auto start = Clock::now();
    const int opens = run.effort(20, 100);
    for (int i = 0; i < opens && secondsSince(start) < kWarmUpSeconds; ++i) {
        openOnce(plugin, clip);
    }
}

// Returns how often it was opened: less often than wanted if a long file takes too much time.
int openOften(CheckRun& run, PlayedPlugin& plugin, const Clip& clip) {
    const int wanted = run.effort(100, 500);
    int opens = 0;
    for (; opens < wanted && run.hasTime(); ++opens) {
        openOnce(plugin, clip);
    }
    if (opens < wanted) {
        run.warn("there was time for " + std::to_string(opens) + " of " + std::to_string(wanted) + " openings of " +
                 clip.name + ": what it leaves each time may go unseen");
    }
    return opens;
}

void doesNotGrow(CheckRun& run) {
    run.failNoMore();
    PlayedPlugin plugin(run);
    const Clip clip = firstClip(plugin, Need::Nothing)->clip();
    run.step("");
    warmUp(run, plugin, clip);
    const hostkit::ProcessSize before = hostkit::processSize();
    const int opens = openOften(run, plugin, clip);
    const hostkit::ProcessSize after = hostkit::processSize();
    const std::uint64_t bytes = growth(before.bytes, after.bytes);
    const std::uint64_t handles = growth(before.handles, after.handles);
    const std::string over = " over " + std::to_string(opens) + " openings of " + clip.name;
    run.note("memory grew by " + std::to_string(bytes / 1024) + " KiB, system objects by " + std::to_string(handles) +
             over);
    if (bytes > kGrowthAtAll && bytes > kGrowthPerOpen * static_cast<std::uint64_t>(opens)) {
        run.warn("memory grew by " + std::to_string(bytes / 1024) + " KiB" + over);
    }
    if (handles > kMoreHandles) {
        run.warn("open files and other system objects grew by " + std::to_string(handles) + over);
    }
}

constexpr Check kMeasureChecks[] = {
    {"opens-quickly", 1,
     "A warning for each file that takes more than a second to be opened and described. An editor opens all clips of a "
     "project one after another while its user waits.",
     opensQuickly, Company::Alone},
    {"first-frame-comes-quickly", 1,
     "A warning for each clip whose first frame takes more than a second. It is what an editor's user sees of the "
     "importer at every cut.",
     firstFrameComesQuickly, Company::Alone},
    {"does-not-grow", 3,
     "A warning when a clip that is opened, asked for a frame and closed 100 to 500 times, by level, costs more than "
     "20 KiB of memory each time and 4 MiB in all, or when more than 8 open files or other system objects are left; or "
     "when a file takes so long to open that there is no time for so many openings. Editors run for days.",
     doesNotGrow, Company::Alone},
};

}  // namespace

std::span<const Check> measureChecks() { return kMeasureChecks; }

}  // namespace importhost::validate
