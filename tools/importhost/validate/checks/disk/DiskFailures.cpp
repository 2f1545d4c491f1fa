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
bool isAnswerToBadDisk(const Step& step, csSDK_int32 result) {
    if (step.isAsync) {
        return step.selector == aiGetFrame && result == aiUnknownError;
    }
    switch (step.selector) {
        case imOpenFile8:
        case imCreateAsyncImporter: return result == imBadFile;
        case imGetInfo8: return result == imBadFile || result == imBadStreamIndex || result == imNoErr;
        case imGetSourceVideo: return result == imFileReadFailed;
        default: return false;
    }
}

// A description tells what could be read: less than the whole. Where a read falls short, the asynchronous importer,
// which reads indexes of its own, takes entries that were cut off for dropped frames and shows an earlier frame.
bool mayDifferAfter(const Step& step, bool halves) {
    return step.isAsync ? halves && step.selector == aiGetFrame
                        : step.selector == imGetInfo8 || step.selector == imGetIndPixelFormat ||
                              step.selector == imAnalysis || step.selector == imDataRateAnalysis ||
                              step.selector == imImportAudio7;
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
    disturbance.mayDiffer = [halves](const Step& step) { return mayDifferAfter(step, halves); };
    return disturbance;
}

// Each call in turn, or as many of them as the level has time for, evenly spread.
void failEachCall(PlayedPlugin& plugin, DiskFaults& disk, DiskCall call, bool halves, const PlayedClip& clip) {
    CheckRun& run = plugin.run();
    disk.clear();
    playWell(plugin, clip, clip.name());
    const int calls = disk.calls(call);
    const int tries = std::min(calls, run.effort(10, 150));
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < tries; ++i) {
        const int nth = 1 + static_cast<int>(std::int64_t{i} * calls / tries);
        playDisturbed(plugin, clip, disturbed(disk, call, nth, halves));
        if (std::chrono::steady_clock::now() - start > kEnough) {
            run.note(clip.name() + ": stopped after " + std::to_string(i + 1) + " of " + std::to_string(tries) +
                     " failures");
            break;
        }
    }
    playWell(plugin, clip, clip.name() + " with the disk well again");
}

void failEachCall(CheckRun& run, DiskCall call, bool halves = false) {
    PlayedPlugin plugin(run);
    DiskFaults disk(plugin.library());
    needCovered(run, disk, call);
    forPlayedClips(plugin, static_cast<std::size_t>(run.effort(1, 3)),
                   [&](const PlayedClip& clip) { failEachCall(plugin, disk, call, halves, clip); });
}

}  // namespace

void diskReadFails(CheckRun& run) { failEachCall(run, DiskCall::Read); }
void diskReadFallsShort(CheckRun& run) { failEachCall(run, DiskCall::Read, true); }
void diskSeekFails(CheckRun& run) { failEachCall(run, DiskCall::Seek); }
void diskSizeFails(CheckRun& run) { failEachCall(run, DiskCall::Size); }
void diskOpenFails(CheckRun& run) { failEachCall(run, DiskCall::Open); }

// --- disk-gone-for-good -----------------------------------------------------------------------------------------

namespace {

csSDK_int32 wantedWithoutDisk(const Step& step, csSDK_int32 usual) {
    if (step.isAsync) {
        return step.selector == aiGetFrame ? csSDK_int32{aiUnknownError} : usual;
    }
    switch (step.selector) {
        case imGetInfo8:
        case imCreateAsyncImporter: return imBadFile;
        case imGetSourceVideo: return usual == imFrameNotFound ? imFrameNotFound : imFileReadFailed;
        default: return usual;
    }
}

void expectAnswerWithoutDisk(CheckRun& run, const Step& step, const Answered& usual) {
    const Answered found = step.take();
    run.expectEqual(step.name, step.resultText(found.result),
                    step.resultText(wantedWithoutDisk(step, usual.result)));
    run.expect(breaksOffIntoSilence(usual, found), step.name + " is neither the sound nor silence");
}

// One past the steps that belong together with this one: frames fetched ahead are read while other calls are made.
std::size_t endOfGroup(const std::vector<Step>& steps, std::size_t first) {
    std::size_t end = first + 1;
    while (steps[first].isAsync && steps[end].isAsync) {
        ++end;
    }
    return end;
}

// The steps between opening and quieting are taken without the disk, and again when it is back.
void loseTheDisk(PlayedPlugin& plugin, DiskFaults& disk, const PlayedClip& clip) {
    CheckRun& run = plugin.run();
    Playthrough play(plugin, clip);
    const std::vector<Step>& steps = play.steps();
    steps.front().take();
    for (std::size_t first = 1; steps[first].isAsync || steps[first].selector != imQuietFile;) {
        const std::size_t end = endOfGroup(steps, first);
        run.step(clip.name() + ", " + steps[first].name + " without the disk");
        disk.fail(DiskCall::Read, 1, DiskFaults::kForEver);
        for (std::size_t i = first; i < end; ++i) {
            expectAnswerWithoutDisk(run, steps[i], clip.usual[i]);
        }
        disk.clear();
        run.step(clip.name() + ", " + steps[first].name + " with the disk back");
        // The last asynchronous step closed the importer that the step before the first one made.
        for (std::size_t i = steps[first].isAsync ? first - 1 : first; i < end; ++i) {
            run.expect(steps[i].take() == clip.usual[i], "the answer is not what it was before");
        }
        first = end;
    }
}

}  // namespace

void diskGoneForGood(CheckRun& run) {
    PlayedPlugin plugin(run);
    DiskFaults disk(plugin.library());
    needCovered(run, disk, DiskCall::Read);
    forPlayedClips(plugin, run.clips().size(), [&](const PlayedClip& clip) { loseTheDisk(plugin, disk, clip); });
}

}  // namespace importhost::validate
