// Sound beside other streams, pictures and clips, and after a pause.
#include "importhost/validate/checks/sound/AudioParts.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <memory>

namespace importhost::validate {

// --- audio-streams ----------------------------------------------------------------------------------------------

namespace {

constexpr std::size_t kWindowFrames = 400;

std::vector<Window> firstWindows(const std::vector<SoundStream>& streams) {
    std::vector<Window> windows;
    for (const SoundStream& stream : streams) {
        stream.select();
        windows.push_back(windowsOf(stream, kWindowFrames).back());
    }
    return windows;
}

}  // namespace

void audioStreams(CheckRun& run) {
    forEachClip(run, Need::Sound, [&](OpenClip& clip) {
        const std::vector<SoundStream> streams = soundStreams(clip);
        if (const auto& made = clip.clip().made) {
            run.expectEqual("the number of streams with sound", streams.size(), made->audio.size());
        }
        const std::vector<Window> windows = firstWindows(streams);
        for (int turn = run.effort(4, 30); turn > 0 && !streams.empty(); --turn) {
            const std::size_t i = run.below(streams.size());
            streams[i].select();
            expectPart(run, streams[i], windows[i], 0, windows[i].frames(),
                       " of stream " + std::to_string(streams[i].number()) + ", selected again");
        }
    });
}

// --- audio-no-stream --------------------------------------------------------------------------------------------

namespace {

void expectUntouched(CheckRun& run, const SoundStream& stream, csSDK_int32 number) {
    run.expectResult("the answer to describing stream " + std::to_string(number) + ", which is none",
                     stream.clip().session().info(number).result, imBadStreamIndex);
    expectSound(run, "the sound of stream " + std::to_string(number) + ", which is none", stream.import(0, 50),
                constantSound(hostkit::undeliveredSample(), stream.channels(), 50));
}

}  // namespace

void audioNoStream(CheckRun& run) {
    forEachClip(run, Need::Sound, [&](OpenClip& clip) {
        const std::vector<SoundStream> streams = soundStreams(clip);
        const auto beyond = static_cast<csSDK_int32>(clip.session().infos().size());
        for (const csSDK_int32 number : {beyond, beyond + 5, 1000}) {
            if (!streams.empty()) {
                expectUntouched(run, streams.front(), number);
            }
        }
    });
}

// --- audio-two-clips --------------------------------------------------------------------------------------------

// Editors open one file once for each of its streams, and several files at a time.
void audioTwoClips(CheckRun& run) {
    PlayedPlugin plugin(run);
    std::vector<std::unique_ptr<OpenClip>> opened;
    std::vector<SoundStream> playing;
    std::vector<Window> alone;
    const auto most = static_cast<std::size_t>(run.effort(4, 16));
    for (const Clip& clip : run.clips()) {
        OpenClip probe(plugin, clip);
        const auto streams = probe.isDescribed() ? soundStreams(probe) : std::vector<SoundStream>{};
        for (std::size_t i = 0; i < std::max<std::size_t>(streams.size(), 2) && !streams.empty(); ++i) {
            if (playing.size() < most) {
                const SoundStream& found = streams[i % streams.size()];
                opened.push_back(std::make_unique<OpenClip>(plugin, clip));
                const auto info = opened.back()->session().info(found.number());
                playing.emplace_back(*opened.back(), found.number(), *info.record.get());
                alone.push_back(windowsOf(playing.back(), 2000).front());
            }
        }
    }
    if (playing.empty()) {
        run.skip("no file with sound that the plug-in opens");
    }
    std::vector<std::size_t> next(playing.size(), 0);
    for (int turn = run.effort(60, 600); turn > 0; --turn) {
        const std::size_t i = run.below(playing.size());
        if (next[i] >= alone[i].frames()) {
            next[i] = 0;
        }
        const std::size_t size = std::min<std::size_t>(1 + run.below(100), alone[i].frames() - next[i]);
        expectSound(run,
                    playing[i].clip().clip().name + ", stream " + std::to_string(playing[i].number()) + ", " +
                        rangeText(static_cast<std::int64_t>(next[i]), size) + ", while other clips are played",
                    playing[i].import(next[i] == 0 ? 0 : -1, size), alone[i].sound.part(next[i], size));
        next[i] += size;
    }
}

// --- audio-beside-frames ----------------------------------------------------------------------------------------

namespace {

std::vector<std::uint64_t> picturesOf(OpenClip& clip, std::int64_t count) {
    std::vector<std::uint64_t> pictures;
    for (std::int64_t index = 0; index < count; ++index) {
        pictures.push_back(digestOf(clip.frame(index).frame));
    }
    return pictures;
}

}  // namespace

void audioBesideFrames(CheckRun& run) {
    bool any = false;
    forEachClip(run, Need::Sound, [&](OpenClip& clip) {
        if (!clip.has(Need::Pictures)) {
            return;
        }
        any = true;
        const SoundStream stream(clip, 0, clip.info());
        const Window window = windowsOf(stream, 4000).front();
        const auto pictures =
            picturesOf(clip, std::min<std::int64_t>(clip.frameCount(), frameBudget(run, clip, 3, 8)));
        std::size_t next = 0;
        for (int turn = frameBudget(run, clip, 12, 80); turn > 0; --turn) {
            const std::size_t index = run.below(pictures.size());
            run.expect(digestOf(clip.frame(static_cast<std::int64_t>(index)).frame) == pictures[index],
                       "frame " + std::to_string(index) + " between requests of sound is another picture");
            next = next >= window.frames() ? 0 : next;
            const std::size_t size = std::min<std::size_t>(1 + run.below(200), window.frames() - next);
            expectSound(run, rangeText(static_cast<std::int64_t>(next), size) + " after frame " + std::to_string(index),
                        stream.import(next == 0 ? 0 : -1, size), window.sound.part(next, size));
            next += size;
        }
    });
    if (!any && !run.hasFailed()) {
        run.skip("no file with both pictures and sound that the plug-in opens");
    }
}

// --- audio-after-quiet ------------------------------------------------------------------------------------------

void audioAfterQuiet(CheckRun& run) {
    forEachSound(run, [&](const SoundStream& stream) {
        for (const Window& window : windowsOf(stream, 1000)) {
            for (const bool asksAgain : {false, true}) {
                refocus(stream.clip());
                if (asksAgain) {
                    stream.select();
                }
                expectPart(run, stream, window, 0, window.frames(),
                           std::string(" after quiet and reopening") +
                               (asksAgain ? " and being described again" : ""));
            }
        }
        const std::size_t half = std::min<std::size_t>(static_cast<std::size_t>(stream.duration()) / 2, 100);
        const Sound whole = stream.import(0, 2 * half);
        stream.import(0, half);
        refocus(stream.clip());
        expectSound(run, "samples at position -1 after quiet and reopening", stream.import(-1, half),
                    whole.part(half, half));
    });
}

}  // namespace importhost::validate
