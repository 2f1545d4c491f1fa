// Sound is the same in whatever parts and order it is imported.
#include "importhost/validate/checks/sound/AudioParts.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>

namespace importhost::validate {

// --- audio-partitions -------------------------------------------------------------------------------------------

namespace {

// Sizes, zero among them, that add up to `frames`.
std::vector<std::size_t> randomSizes(CheckRun& run, std::size_t frames) {
    const std::uint64_t largest = 2 + run.below(frames / 4 + 2);
    std::vector<std::size_t> sizes;
    while (frames > 0) {
        sizes.push_back(std::min<std::size_t>(run.below(largest), frames));
        frames -= sizes.back();
    }
    return sizes;
}

bool expectParts(CheckRun& run, const SoundStream& stream, const Window& window,
                 const std::vector<std::size_t>& sizes) {
    std::size_t start = 0;
    for (const std::size_t size : sizes) {
        if (!expectPart(run, stream, window, start, size, ", imported in parts")) {
            return false;
        }
        start += size;
    }
    return true;
}

}  // namespace

void audioPartitions(CheckRun& run) {
    forEachSound(run, [&](const SoundStream& stream) {
        for (const Window& window : windowsOf(stream, static_cast<std::size_t>(run.effort(500, 4000)))) {
            for (int turn = run.effort(2, 8); turn > 0; --turn) {
                expectParts(run, stream, window, randomSizes(run, window.frames()));
            }
        }
    });
}

// --- audio-every-partition --------------------------------------------------------------------------------------

namespace {

// Bit i of `way` set: a part ends after sample i.
std::vector<std::size_t> sizesOf(unsigned way, std::size_t frames) {
    std::vector<std::size_t> sizes = {1};
    for (std::size_t i = 0; i + 1 < frames; ++i) {
        if ((way >> i & 1U) != 0) {
            sizes.push_back(1);
        } else {
            ++sizes.back();
        }
    }
    return sizes;
}

// Small parts of the stream: its start, its end, and one in which a video frame's sound usually ends.
std::vector<std::int64_t> placesOf(const SoundStream& stream, std::int64_t frames) {
    const aviwriter::SampleAudio* made = stream.made();
    const std::int64_t chunk = made && made->chunkFrames ? std::int64_t{*made->chunkFrames} : stream.duration() / 2;
    std::vector<std::int64_t> places = {0, chunk - frames / 2, stream.duration() - frames};
    std::erase_if(places, [&](std::int64_t place) { return place < 0 || place + frames > stream.duration(); });
    return places;
}

}  // namespace

void audioEveryPartition(CheckRun& run) {
    const auto frames = static_cast<std::size_t>(run.effort(3, 7));
    forEachSound(run, [&](const SoundStream& stream) {
        for (const std::int64_t place : placesOf(stream, static_cast<std::int64_t>(frames))) {
            const Window window{place, stream.import(place, frames)};
            for (unsigned way = 0; way < 1U << (frames - 1); ++way) {
                if (!expectParts(run, stream, window, sizesOf(way, frames))) {
                    break;
                }
            }
        }
    });
}

// --- audio-seeks ------------------------------------------------------------------------------------------------

void audioSeeks(CheckRun& run) {
    forEachSound(run, [&](const SoundStream& stream) {
        const std::vector<Window> windows = windowsOf(stream, static_cast<std::size_t>(run.effort(1000, 8000)));
        for (const Window& window : windows) {
            for (std::size_t end = window.frames(); end > 0;) {
                const std::size_t size = std::min<std::size_t>(end, 1 + window.frames() / 7);
                end -= size;
                expectPart(run, stream, window, end, size, ", going backwards");
            }
        }
        for (int turn = run.effort(10, 150); turn > 0; --turn) {
            const Window& window = windows[run.below(windows.size())];
            const std::size_t start = run.below(window.frames());
            const std::size_t size = run.below(std::min<std::size_t>(window.frames() - start, 300) + 1);
            expectPart(run, stream, window, start, size, ", jumped to");
        }
    });
}

// --- audio-continues --------------------------------------------------------------------------------------------

namespace {

void expectContinuing(CheckRun& run, const SoundStream& stream, const Window& window) {
    std::size_t next = 0;
    std::size_t jumpedTo = 0;
    for (int turn = run.effort(15, 150); turn > 0; --turn) {
        const bool jumps = turn % 4 == 0 || next >= window.frames() || next == 0;
        next = jumps ? run.below(window.frames()) : next;
        jumpedTo = jumps ? next : jumpedTo;
        const std::size_t size = run.below(std::min<std::size_t>(window.frames() - next, 60) + 1);
        const std::int64_t position = window.start + static_cast<std::int64_t>(next);
        const std::int64_t asked = jumps ? position : -1 - static_cast<std::int64_t>(run.below(1000));
        if (!expectSound(run,
                         std::to_string(size) + " samples at position " + std::to_string(asked) +
                             ", where the import has come to " + std::to_string(position) + " since it jumped to " +
                             std::to_string(window.start + static_cast<std::int64_t>(jumpedTo)),
                         stream.import(asked, size), window.sound.part(next, size))) {
            return;
        }
        next += size;
    }
}

}  // namespace

void audioContinues(CheckRun& run) {
    forEachSound(run, [&](const SoundStream& stream) {
        const std::vector<Window> windows = windowsOf(stream, static_cast<std::size_t>(run.effort(500, 3000)));
        for (const Window& window : windows) {
            expectContinuing(run, stream, window);
        }
        const Window& first = windows.front();
        const std::size_t some = std::min<std::size_t>(first.frames(), 40);
        stream.select();
        expectSound(run, "the first samples at position -1, described anew", stream.import(-1, some),
                    first.sound.part(0, some));
        stream.import(stream.duration() + 10, 5);
        if (stream.made()) {
            expectSound(run, "samples at position -1 after some behind the end", stream.import(-1, some),
                        constantSound(stream.fill(), stream.channels(), some));
        }
    });
}

}  // namespace importhost::validate
