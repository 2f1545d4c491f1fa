// Functions of the codec that fail: once, at each of their calls in turn, or for good.
#include "importhost/validate/checks/codec/CodecTopics.h"
#include "importhost/validate/checks/stage/Codec.h"
#include "importhost/validate/checks/stage/OwnLogs.h"
#include "importhost/validate/checks/stage/Playthrough.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <map>

namespace importhost::validate {

namespace {

// An exception that left a handler, as its guard answers it: here that nothing is described.
constexpr csSDK_int32 kException = 99;

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

// The answer to a call that such a failure reached, where there is only one.
std::optional<csSDK_int32> answerTo(const FunctionRow& row, Asked asked) {
    switch (asked) {
        case Asked::Info:
        case Asked::AsyncCreate: return row.spoilsDescriptions ? std::optional(imBadFile) : std::nullopt;
        case Asked::Frame: return row.spoilsFrames ? std::optional(imBadCompression) : std::nullopt;
        case Asked::AsyncFrame: return row.spoilsFrames ? std::optional(aiUnknownError) : std::nullopt;
        default: return std::nullopt;
    }
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
    disturbance.mayAnswer = [&row](Asked asked, csSDK_int32 result) {
        // Where an instance lost its initialisation to another one's close, its frames fail, too.
        const bool isLost = row.breaksThePairing &&
                            (((asked == Asked::Frame) && (result == imBadCompression || result == kException)) ||
                             (asked == Asked::AsyncFrame && result == aiUnknownError) ||
                             (asked == Asked::Sound && result == kException));
        return isLost || answerTo(row, asked) == std::optional(result);
    };
    if (row.isAskedForFormats || row.breaksThePairing) {
        disturbance.mayDiffer = {Asked::Formats};
    }
    disturbance.lasts = row.breaksThePairing;
    return disturbance;
}

}  // namespace

// --- codec-given-back -------------------------------------------------------------------------------------------

void codecGivenBack(CheckRun& run) {
    PlayedPlugin plugin(run);
    Codec codec(run);
    const Held before = Held::now(codec, plugin.host());
    forPlaythroughs(run, plugin, run.clips().size(), [&](Playthrough&, const std::string&) {
        expectGivenBack(run, before, Held::now(codec, plugin.host()));
        expectPairedCalls(run, codec.counters());
        expectGoodManners(run, codec.counters());
    });
}

// --- codec-fails-once -------------------------------------------------------------------------------------------

namespace {

void failCall(CheckRun& run, Codec& codec, Playthrough& play, const FunctionRow& row, std::uint32_t nth,
              PlayedPlugin& plugin) {
    const Held before = Held::now(codec, plugin.host());
    playDisturbed(run, play, failing(codec, row, nth, 1));
    expectPairedCalls(run, codec.counters());
    expectGoodManners(run, codec.counters());
    if (!row.breaksThePairing) {
        expectGivenBack(run, before, Held::now(codec, plugin.host()));
    }
}

// Each call of each function, or as many of them as the level has time for, evenly spread. The functions take turns,
// so that none is left out when the time is up.
void failCalls(CheckRun& run, Codec& codec, Playthrough& play, const StandinCounters& usual, PlayedPlugin& plugin,
               const std::string& clip) {
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
                run.note(clip + ": stopped after " + std::to_string(turn) + " failures of each function");
                return;
            }
            const auto nth = 1 + static_cast<std::uint32_t>(std::uint64_t{turn} * calls / tries);
            failCall(run, codec, play, row, nth, plugin);
        }
    }
}

}  // namespace

void codecFailsOnce(CheckRun& run) {
    PlayedPlugin plugin(run);
    Codec codec(run);
    forPlaythroughs(run, plugin, static_cast<std::size_t>(run.effort(1, 3)),
                 [&](Playthrough& play, const std::string& clip) {
        codec.reset();
        playWell(run, play, clip);
        const StandinCounters usual = codec.counters();
        failCalls(run, codec, play, usual, plugin, clip);
        codec.reset();
        playWell(run, play, clip + " with the codec well again");
    });
}

// --- codec-fails-for-good ---------------------------------------------------------------------------------------

namespace {

// Nothing is described: frames and sound are refused as such.
csSDK_int32 wantedWhenBroken(const FunctionRow& row, const Answered& usual) {
    if (usual.asked == Asked::Info && usual.name != "description of stream 0") {
        return usual.result;        // sound alone
    }
    if (row.spoilsDescriptions && (usual.asked == Asked::Frame || usual.asked == Asked::Sound)) {
        return kException;
    }
    return answerTo(row, usual.asked).value_or(usual.result);
}

void playBroken(CheckRun& run, Playthrough& play, const FunctionRow& row) {
    play.start();
    for (std::size_t i = 0; i < play.steps().size(); ++i) {
        const Answers found = play.steps()[i].take();
        const Answers& usual = play.usual(i);
        for (std::size_t call = 0; call < std::min(found.size(), usual.size()); ++call) {
            Answered wanted = usual[call];
            wanted.result = wantedWhenBroken(row, usual[call]);
            run.expectEqual(found[call].name, resultText(found[call]), resultText(wanted));
        }
    }
    play.start();
}

}  // namespace

void codecFailsForGood(CheckRun& run) {
    PlayedPlugin plugin(run);
    Codec codec(run);
    const Held before = Held::now(codec, plugin.host());
    forPlaythroughs(run, plugin, static_cast<std::size_t>(run.effort(1, 4)),
                 [&](Playthrough& play, const std::string& clip) {
        for (const FunctionRow& row : kFunctions) {
            if (!run.hasTime()) {
                run.step("");
                run.note(clip + ": stopped before " + codecFunctionName(row.function));
                break;
            }
            run.step(clip + ", " + codecFunctionName(row.function) + " fails at every call");
            codec.reset();
            codec.fail(row.function, 1, kForEver);
            playBroken(run, play, row);
            expectPairedCalls(run, codec.counters());
            codec.reset();
            expectGivenBack(run, before, Held::now(codec, plugin.host()));
            playWell(run, play, clip + ", with the codec well again");
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
