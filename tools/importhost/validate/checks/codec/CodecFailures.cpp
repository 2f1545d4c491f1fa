// Functions of the codec that fail: once, at each of their calls in turn, or for good.
#include "importhost/validate/checks/codec/CodecTopics.h"
#include "importhost/validate/checks/stage/Codec.h"
#include "importhost/validate/checks/stage/ErrorEvents.h"
#include "importhost/validate/checks/stage/OwnLogs.h"
#include "importhost/validate/checks/stage/Playthrough.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>

namespace importhost::validate {

namespace {

constexpr std::uint32_t kForEver = 1000000;

// What a failing function does to which calls.
struct FunctionRow {
    StandinFunction function;
    bool spoilsDescriptions = false;    // of stream 0, and asynchronous importers
    bool spoilsFrames = false;
    bool isAskedForFormats = false;     // a format whose query fails is not offered
    bool breaksThePairing = false;      // a codec that does not count an init still counts its close
};

constexpr FunctionRow kFunctions[] = {
    {.function = kStandinLibraryClose},
    {.function = kStandinOpen, .spoilsDescriptions = true},
    {.function = kStandinClose},
    {.function = kStandinGetString},
    {.function = kStandinGetParam},
    {.function = kStandinCompressQuery},
    {.function = kStandinDecompressQuery, .spoilsDescriptions = true, .isAskedForFormats = true},
    {.function = kStandinDecompressBegin, .spoilsFrames = true},
    {.function = kStandinDecompress, .spoilsFrames = true},
    {.function = kStandinDecompressEnd},
    // The last in each turn: a codec that was never initialised does not even close what is open.
    {.function = kStandinLibraryInit, .spoilsDescriptions = true, .breaksThePairing = true},
};

// The only answer to a call that such a failure reached; none where there are several, or only the usual one.
std::optional<csSDK_int32> answerTo(const FunctionRow& row, const Step& step) {
    if (step.isAsync) {
        return row.spoilsFrames && step.selector == aiGetFrame ? std::optional(aiUnknownError) : std::nullopt;
    }
    switch (step.selector) {
        case imGetInfo8:
        case imCreateAsyncImporter: return row.spoilsDescriptions ? std::optional(imBadFile) : std::nullopt;
        case imGetSourceVideo: return row.spoilsFrames ? std::optional(imBadCompression) : std::nullopt;
        default: return std::nullopt;
    }
}

// An instance that lost its initialisation to another one's close cannot decode either.
bool isAnswerOfLostInstance(const Step& step, csSDK_int32 result) {
    if (step.isAsync) {
        return step.selector == aiGetFrame && result == aiUnknownError;
    }
    return (step.selector == imGetSourceVideo && result == imBadCompression) || result == kExceptionResult;
}

// What the codec and the host have lent out, to see later whether it came back.
struct Held {
    std::string codec;
    std::size_t frames = 0;
    std::size_t blocks = 0;
    int suites = 0;

    static Held now(const Codec& codec, hostkit::Host& host) {
        return {codec.heldText(), static_cast<std::size_t>(host.frames().alive()), host.memory().aliveBlocks(),
                host.suitesHeld()};
    }
};

void expectGivenBack(CheckRun& run, const Held& before, const Held& now) {
    run.expectEqual("what the codec holds after the clip was closed", now.codec, before.codec);
    run.expectEqual("the host's frames that are alive after the clip was closed", now.frames, before.frames);
    run.expectEqual("the host's memory blocks after the clip was closed", now.blocks, before.blocks);
    run.expectEqual("the host's suites held after the clip was closed", now.suites, before.suites);
}

// Calls made, whatever came of them: an instance that could not be opened needs no close.
void expectPairedCalls(CheckRun& run, const StandinCounters& now) {
    run.expectEqual("calls of quorvane_close", now.calls[kStandinClose],
                    now.calls[kStandinOpen] - now.failures[kStandinOpen]);
    run.expectEqual("calls of quorvane_library_close", now.calls[kStandinLibraryClose],
                    now.calls[kStandinLibraryInit]);
}

void expectGoodManners(CheckRun& run, const StandinCounters& now) {
    run.expectEqual("calls on an instance while another call on it was running", now.overlappingCalls, 0U);
    run.expectEqual("decode calls whose output record was not set up", now.unpreparedOutputs, 0U);
}

Disturbance failing(Codec& codec, const FunctionRow& row, std::uint32_t nth, std::uint32_t times) {
    Disturbance disturbance;
    const char* name = codecFunctionName(row.function);
    disturbance.name = times == 1 ? std::string(name) + " fails at call " + std::to_string(nth)
                                  : std::string(name) + " fails at every call";
    disturbance.begin = [&codec, &row, nth, times] {
        codec.reset();
        codec.fail(row.function, nth, times);
    };
    disturbance.happened = [&codec, &row] { return static_cast<int>(codec.counters().failures[row.function]); };
    disturbance.end = [] {};
    disturbance.mayAnswer = [&row](const Step& step, csSDK_int32 result) {
        return (row.breaksThePairing && isAnswerOfLostInstance(step, result)) || answerTo(row, step) == result;
    };
    disturbance.mayDiffer = [&row](const Step& step) {
        return step.selector == imGetIndPixelFormat && (row.isAskedForFormats || row.breaksThePairing);
    };
    disturbance.lasts = row.breaksThePairing;
    return disturbance;
}

}  // namespace

// --- codec-given-back -------------------------------------------------------------------------------------------

void codecGivenBack(CheckRun& run) {
    PlayedPlugin plugin(run);
    Codec codec(run);
    const Held before = Held::now(codec, plugin.host());
    forPlayedClips(plugin, run.clips().size(), [&](const PlayedClip&) {
        expectGivenBack(run, before, Held::now(codec, plugin.host()));
        expectPairedCalls(run, codec.counters());
        expectGoodManners(run, codec.counters());
    });
}

// --- codec-fails-once -------------------------------------------------------------------------------------------

namespace {

void failCall(PlayedPlugin& plugin, Codec& codec, const PlayedClip& clip, const FunctionRow& row, std::uint32_t nth) {
    CheckRun& run = plugin.run();
    const Held before = Held::now(codec, plugin.host());
    playDisturbed(plugin, clip, failing(codec, row, nth, 1));
    expectPairedCalls(run, codec.counters());
    expectGoodManners(run, codec.counters());
    if (!row.breaksThePairing) {
        expectGivenBack(run, before, Held::now(codec, plugin.host()));
    }
}

// Each call of each function, or as many of them as the level has time for, evenly spread. The functions take turns,
// so that none is left out when the time is up.
void failCalls(PlayedPlugin& plugin, Codec& codec, const PlayedClip& clip, const StandinCounters& usual) {
    CheckRun& run = plugin.run();
    const auto most = static_cast<std::uint32_t>(run.effort(6, 36));
    for (std::uint32_t turn = 0; turn < most; ++turn) {
        for (const FunctionRow& row : kFunctions) {
            const std::uint32_t calls = usual.calls[row.function];
            const std::uint32_t tries = std::min(calls, most);
            if (turn >= tries) {
                continue;
            }
            if (!run.hasTime()) {
                run.step("");
                run.note(clip.name() + ": stopped after " + std::to_string(turn) + " failures of each function");
                return;
            }
            const auto nth = 1 + static_cast<std::uint32_t>(std::uint64_t{turn} * calls / tries);
            failCall(plugin, codec, clip, row, nth);
        }
    }
}

}  // namespace

void codecFailsOnce(CheckRun& run) {
    PlayedPlugin plugin(run);
    Codec codec(run);
    forPlayedClips(plugin, static_cast<std::size_t>(run.effort(1, 3)), [&](const PlayedClip& clip) {
        codec.reset();
        playWell(plugin, clip, clip.name());
        failCalls(plugin, codec, clip, codec.counters());
        codec.reset();
        playWell(plugin, clip, clip.name() + " with the codec well again");
    });
}

// --- codec-fails-for-good ---------------------------------------------------------------------------------------

namespace {

// Where stream 0 is not described, whatever depends on that is refused as such.
csSDK_int32 wantedWhenBroken(const FunctionRow& row, const Step& step, const Answered& usual, bool isDescribed) {
    if (step.selector == imGetInfo8 && !step.name.starts_with("the description of stream 0")) {
        return usual.result;        // sound alone
    }
    const bool needsDescription = step.selector == imGetSourceVideo || step.selector == imImportAudio7 ||
                                  step.selector == imGetIndPixelFormat || step.selector == imAnalysis ||
                                  step.selector == imDataRateAnalysis || step.selector == imGetAudioChannelLayout;
    if (!step.isAsync && !isDescribed && needsDescription) {
        return kExceptionResult;
    }
    return answerTo(row, step).value_or(usual.result);
}

void playBroken(PlayedPlugin& plugin, const PlayedClip& clip, const FunctionRow& row) {
    Playthrough play(plugin, clip);
    bool isDescribed = false;
    for (std::size_t i = 0; i < play.steps().size(); ++i) {
        const Step& step = play.steps()[i];
        if (!play.canTake(step)) {
            continue;
        }
        const csSDK_int32 found = step.take().result;
        if (step.selector == imGetInfo8 && !step.isAsync) {
            isDescribed = hostkit::isDescribed(found);
        }
        plugin.run().expectEqual(step.name, step.resultText(found),
                                 step.resultText(wantedWhenBroken(row, step, clip.usual[i], isDescribed)));
    }
}

}  // namespace

void codecFailsForGood(CheckRun& run) {
    PlayedPlugin plugin(run);
    Codec codec(run);
    const Held before = Held::now(codec, plugin.host());
    forPlayedClips(plugin, static_cast<std::size_t>(run.effort(1, 4)), [&](const PlayedClip& clip) {
        for (const FunctionRow& row : kFunctions) {
            if (!run.hasTime()) {
                run.step("");
                run.note(clip.name() + ": stopped before " + codecFunctionName(row.function));
                break;
            }
            run.step(clip.name() + ", " + codecFunctionName(row.function) + " fails at every call");
            codec.reset();
            codec.fail(row.function, 1, kForEver);
            playBroken(plugin, clip, row);
            expectPairedCalls(run, codec.counters());
            codec.reset();
            expectGivenBack(run, before, Held::now(codec, plugin.host()));
            playWell(plugin, clip, clip.name() + ", with the codec well again");
        }
    });
}

// --- codec-fails-while-logging ----------------------------------------------------------------------------------

namespace {

// The logs that this check causes are of no use to anybody.
class NoLogsLeft {
public:
    ~NoLogsLeft() { removeFiles(ownLogs(m_log)); }

private:
    hostkit::PluginLog m_log;
};

}  // namespace

void codecFailsWhileLogging(CheckRun& run) {
    const NoLogsLeft noLogsLeft;
    const hostkit::LogSwitch on;
    const hostkit::PluginLibrary stays(run.plugin());       // and with it the codec
    Codec codec(run);
    for (const FunctionRow& row : kFunctions) {
        run.step(std::string(codecFunctionName(row.function)) + " fails at every call");
        codec.reset();
        codec.fail(row.function, 1, kForEver);
        PlayedPlugin plugin(run);
        const csSDK_int32 result = plugin.started().init.result;
        run.expect(result == imNoErr || result == imIsCacheable,
                   "imInit was answered with " + hostkit::resultText(result));
        run.expect(plugin.started().formats.front().result == imNoErr, "no import format is offered");
        expectPairedCalls(run, codec.counters());
    }
}

}  // namespace importhost::validate
