// Calls of the system that fail: once, at each of them in turn, or for good.
#include "importhost/validate/checks/disk/DiskTopics.h"
#include "importhost/validate/checks/stage/Playthrough.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/watch/DiskFaults.h"

#include <algorithm>
#include <chrono>

namespace importhost::validate {

namespace {

using hostkit::DiskCall;
using hostkit::DiskFaults;

// Big files of a user's take long to parse, and they are parsed once for each failure.
constexpr std::chrono::seconds kEnough{12};

void needCovered(CheckRun& run, const DiskFaults& disk, DiskCall call) {
    if (!disk.covers(call)) {
        run.skip(std::string("the plug-in does not call the system to ") + hostkit::diskCallName(call) +
                 " in a way that can be made to fail");
    }
}

// What a call may answer that could not read all it wanted.
bool isAnswerToBadDisk(Asked asked, csSDK_int32 result) {
    switch (asked) {
        case Asked::Open:
        case Asked::AsyncCreate: return result == imBadFile;
        case Asked::Info: return result == imBadFile || result == imBadStreamIndex || result == imNoErr;
        case Asked::Frame: return result == imFileReadFailed;
        case Asked::AsyncFrame: return result == aiUnknownError;
        default: return false;
    }
}

Disturbance disturbed(DiskFaults& disk, DiskCall call, int nth, bool halves) {
    Disturbance disturbance;
    disturbance.name = std::string(hostkit::diskCallName(call)) + " " + std::to_string(nth) +
                       (halves ? " gives half of what was asked for" : " fails");
    disturbance.begin = [&disk, call, nth, halves] {
        disk.clear();
        halves ? disk.halveReads(nth) : disk.fail(call, nth);
    };
    disturbance.happened = [&disk] { return disk.disturbed(); };
    disturbance.end = [&disk] { disk.clear(); };
    disturbance.mayAnswer = isAnswerToBadDisk;
    // A description tells what could be read: less than the whole.
    disturbance.mayDiffer = {Asked::Info, Asked::Formats, Asked::Analysis, Asked::DataRate, Asked::Sound};
    if (halves) {
        // The asynchronous importer reads indexes of its own. Entries that were cut off are taken for dropped frames,
        // in whose place an earlier frame is shown.
        disturbance.mayDiffer.insert(Asked::AsyncFrame);
    }
    return disturbance;
}

// Each call in turn, or as many of them as the level has time for, evenly spread.
void failEachCall(CheckRun& run, DiskFaults& disk, DiskCall call, bool halves, Playthrough& play,
                  const std::string& clip) {
    disk.clear();
    playWell(run, play, clip);
    const int calls = disk.calls(call);
    const int tries = std::min(calls, run.effort(10, 150));
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < tries; ++i) {
        const int nth = 1 + static_cast<int>(std::int64_t{i} * calls / tries);
        playDisturbed(run, play, disturbed(disk, call, nth, halves));
        if (std::chrono::steady_clock::now() - start > kEnough) {
            run.note(clip + ": stopped after " + std::to_string(i + 1) + " of " + std::to_string(tries) + " failures");
            break;
        }
    }
    playWell(run, play, clip + " with the disk well again");
}

void failEachCall(CheckRun& run, DiskCall call, bool halves = false) {
    PlayedPlugin plugin(run);
    DiskFaults disk(plugin.library());
    needCovered(run, disk, call);
    forPlaythroughs(run, plugin, static_cast<std::size_t>(run.effort(1, 3)),
                 [&](Playthrough& play, const std::string& clip) {
                     failEachCall(run, disk, call, halves, play, clip);
                 });
}

}  // namespace

void diskReadFails(CheckRun& run) { failEachCall(run, DiskCall::Read); }
void diskReadFallsShort(CheckRun& run) { failEachCall(run, DiskCall::Read, true); }
void diskSeekFails(CheckRun& run) { failEachCall(run, DiskCall::Seek); }
void diskSizeFails(CheckRun& run) { failEachCall(run, DiskCall::Size); }
void diskOpenFails(CheckRun& run) { failEachCall(run, DiskCall::Open); }

// --- disk-gone-for-good -----------------------------------------------------------------------------------------

namespace {

csSDK_int32 wantedWithoutDisk(const Answered& usual) {
    switch (usual.asked) {
        case Asked::Info:
        case Asked::AsyncCreate: return imBadFile;
        case Asked::Frame: return usual.result == imFrameNotFound ? imFrameNotFound : imFileReadFailed;
        case Asked::AsyncFrame: return aiUnknownError;
        default: return usual.result;
    }
}

void expectAnswersWithoutDisk(CheckRun& run, const Answers& usual, const Answers& found) {
    for (std::size_t i = 0; i < std::min(usual.size(), found.size()); ++i) {
        Answered wanted = usual[i];
        wanted.result = wantedWithoutDisk(usual[i]);
        run.expectEqual(found[i].name, resultText(found[i]), resultText(wanted));
        run.expect(breaksOffIntoSilence(usual[i], found[i]), found[i].name + " is neither the sound nor silence");
    }
}

// Opened and described as ever; then the disk goes, and comes back before the clip is quieted. Last of all the
// description is asked for without a disk: it leaves nothing to ask for frames with.
void loseTheDisk(CheckRun& run, DiskFaults& disk, Playthrough& play, const std::string& clip) {
    play.start();
    const std::vector<Step>& steps = play.steps();
    steps[0].take();
    steps[1].take();
    for (std::size_t i = 2; i < steps.size() && steps[i].canBeRepeated; ++i) {
        run.step(clip + ", " + steps[i].name + " without the disk");
        disk.fail(DiskCall::Read, 1, DiskFaults::kForEver);
        expectAnswersWithoutDisk(run, play.usual(i), steps[i].take());
        disk.clear();
        run.step(clip + ", " + steps[i].name + " with the disk back");
        run.expect(steps[i].take() == play.usual(i), "the answer is not what it was before");
    }
    run.step(clip + ", description without the disk");
    disk.fail(DiskCall::Read, 1, DiskFaults::kForEver);
    expectAnswersWithoutDisk(run, play.usual(1), steps[1].take());
    disk.clear();
    run.step(clip + ", description with the disk back");
    run.expect(steps[1].take() == play.usual(1), "the answer is not what it was before");
    play.start();
}

}  // namespace

void diskGoneForGood(CheckRun& run) {
    PlayedPlugin plugin(run);
    DiskFaults disk(plugin.library());
    needCovered(run, disk, DiskCall::Read);
    forPlaythroughs(run, plugin, run.clips().size(),
                 [&](Playthrough& play, const std::string& clip) { loseTheDisk(run, disk, play, clip); });
}

}  // namespace importhost::validate
