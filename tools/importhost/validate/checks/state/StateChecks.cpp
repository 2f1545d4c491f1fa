// Random calls that a legal host could send, each answer held against a small model of the protocol.
#include "importhost/validate/checks/state/Desk.h"
#include "importhost/validate/framework/Groups.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>

namespace importhost::validate {

namespace {

constexpr std::size_t kDesks = 3;
constexpr std::size_t kMostFiles = 12;
constexpr int kStepsToAStart = 120;                 // room enough for clips to get into odd states before

// All of them, or kMostFiles chosen at random.
std::vector<KnownFile> learnFiles(CheckRun& run, PlayedPlugin& plugin) {
    std::vector<const Clip*> clips;
    for (const Clip& clip : run.clips()) {
        clips.push_back(&clip);
    }
    for (std::size_t i = clips.size(); i > 1; --i) {
        std::swap(clips[i - 1], clips[run.below(i)]);
    }
    clips.resize(std::min(clips.size(), kMostFiles));
    std::vector<KnownFile> files;
    for (const Clip* clip : clips) {
        run.step(clip->name);
        KnownFile file(plugin, *clip);
        if (file.opened() == imNoErr) {
            files.push_back(std::move(file));
        }
    }
    run.step("");
    if (files.empty()) {
        run.skip("no file that the plug-in opens");
    }
    return files;
}

using Desks = std::vector<std::unique_ptr<Desk>>;

// An editor that starts the plug-in once more, mostly after a shutdown or two. No clip is open then; all that was known
// of the files must hold afterwards.
void startAnew(CheckRun& run, PlayedPlugin& plugin, const Desks& desks, int startsBefore) {
    for (const auto& desk : desks) {
        desk->leave();
    }
    const int shutdowns = (startsBefore + 1) % 3;
    for (int i = 0; i < shutdowns; ++i) {
        run.expectResult("imShutdown", plugin.session().shutdown());
        run.expectEqual("suites held after imShutdown", plugin.host().suitesHeld(), 0);
    }
    run.expectResult("imInit once more", plugin.session().init().result);
}

void playAtRandom(CheckRun& run, PlayedPlugin& plugin, Refusals* refusals, int steps) {
    std::vector<KnownFile> files = learnFiles(run, plugin);
    Desks desks;
    for (std::size_t i = 0; i < kDesks; ++i) {
        desks.push_back(std::make_unique<Desk>(run, plugin, files, refusals));
    }
    for (const auto& desk : desks) {
        desk->tellOthers([&desks] {
            for (const auto& each : desks) {
                each->doubtAnnounced();
            }
        });
    }
    int taken = 0;
    int starts = 0;
    while (taken < steps && !run.hasFailed() && run.hasTime()) {
        run.step("step " + std::to_string(++taken));
        if (taken % kStepsToAStart == 0) {
            startAnew(run, plugin, desks, starts++);
        } else {
            desks[run.below(kDesks)]->act();
        }
    }
    run.step("");
    int struck = 0;
    for (const auto& desk : desks) {
        struck += desk->struck();
    }
    run.note("clips: " + std::to_string(files.size()) + ", steps: " + std::to_string(taken) + " of " +
             std::to_string(steps) + ", starts among them: " + std::to_string(starts) +
             ", calls of codec and disk that failed: " + std::to_string(struck));
}

// --- random-calls -----------------------------------------------------------------------------------------------

void randomCalls(CheckRun& run) {
    PlayedPlugin plugin(run);
    playAtRandom(run, plugin, nullptr, run.effort(200, 3000));
}

// --- random-calls-with-refusals ---------------------------------------------------------------------------------

void randomCallsWithRefusals(CheckRun& run) {
    PlayedPlugin plugin(run);
    Refusals refusals(run, plugin);
    const std::string before = refusals.heldByCodec();
    playAtRandom(run, plugin, &refusals, run.effort(200, 3000));
    run.expectEqual("what the codec holds after all clips were closed", refusals.heldByCodec(), before);
}

constexpr Check kStateChecks[] = {
    {"random-calls", 2,
     "Several clips at once, damaged ones among them, are opened, described, played, played ahead, quieted and closed "
     "in random order; now and then all are closed and the plug-in is shut down and started anew. Every answer must "
     "follow from the calls before it, and the same frame and the same sound must always be the same, whoever asks for "
     "them and when. The seed repeats a failure exactly. An editor's users do things in orders that nobody thought of.",
     randomCalls},
    {"random-calls-with-refusals", 3,
     "The same, while the host refuses suites and frame buffers, the codec fails and the disk does, at random. A call "
     "that is struck gives an error that fits; made again it works; nothing that is delivered is ever wrong, and "
     "everything is given back at the end.",
     randomCallsWithRefusals},
};

}  // namespace

std::span<const Check> stateChecks() { return kStateChecks; }

}  // namespace importhost::validate
