// Which frame belongs to which time.
#include "importhost/validate/checks/frames/FrameParts.h"
#include "importhost/validate/framework/AviBytes.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <array>
#include <limits>

namespace importhost::validate {

// --- frame-first-and-last ---------------------------------------------------------------------------------------

void frameFirstAndLast(CheckRun& run) {
    forEachFilm(run, Films::Whole, [&](const Film& film) {
        const imFrameFormat wanted = film.clip().wanted(film.firstFormat());
        for (const std::int64_t index : spread(film.frames(), frameBudget(run, film, 3, 50))) {
            const Seen found = seen(film.clip().frame(index));
            const std::string what = frameText(index, film.firstFormat()) + " of " + std::to_string(film.frames());
            if (expectDelivered(run, film, what, found)) {
                run.expectEqual(what, found,
                                Seen{imNoErr, wanted.inPixelFormat, wanted.inFrameWidth, wanted.inFrameHeight,
                                     found.digest});
            }
        }
    });
}

// --- frame-outside ----------------------------------------------------------------------------------------------

namespace {

// Every frame has a 32-bit number; beyond them this importer counts from 0 again.
bool isCounted(const Film& film, PrTime time) {
    return time / film.ticksPerFrame() <= std::numeric_limits<std::uint32_t>::max();
}

void expectNothingPastTheEnd(CheckRun& run, const Film& film) {
    const PrTime end = film.startOf(film.frames());
    const PrTime day = PrTime{24 * 60 * 60} * 254016000000;
    for (const PrTime time : {end, end + 1, film.middleOf(film.frames()), film.startOf(2 * film.frames()), end + day}) {
        if (isCounted(film, time)) {
            run.expectEqual("the answer at tick " + std::to_string(time) + ", where the clip has ended at " +
                                std::to_string(end),
                            film.at(time, film.firstFormat()), refusal(imFrameNotFound));
        }
    }
}

void expectNothingBeforeTheStart(CheckRun& run, const Film& film) {
    for (const std::int64_t frames : {std::int64_t{1}, std::int64_t{2}, film.frames() + 1}) {
        run.expectEqual("the answer " + std::to_string(frames) + " frame(s) before the start",
                        film.at(-film.startOf(frames), film.firstFormat()), refusal(imFrameNotFound));
    }
}

// A host that rounds may ask a little before the start; a request within one frame is answered with the first.
void expectFirstFrameJustBeforeTheStart(CheckRun& run, const Film& film, const Seen& first) {
    for (const PrTime time : {PrTime{-1}, -film.ticksPerFrame() / 2, -film.ticksPerFrame() + 1}) {
        run.expectEqual("the answer at tick " + std::to_string(time) + ", less than a frame before the start",
                        film.at(time, film.firstFormat()), first);
    }
}

}  // namespace

void frameOutside(CheckRun& run) {
    forEachFilm(run, Films::Whole, [&](const Film& film) {
        const Seen first = film.frame(0);
        expectNothingPastTheEnd(run, film);
        expectNothingBeforeTheStart(run, film);
        expectFirstFrameJustBeforeTheStart(run, film, first);
        for (const PrTime time : {std::numeric_limits<PrTime>::max(), std::numeric_limits<PrTime>::min()}) {
            film.at(time, film.firstFormat());      // any answer will do: it must not crash
        }
        run.expectEqual("frame 0 after the requests outside", film.frame(0), first);
    });
}

// --- frame-boundaries -------------------------------------------------------------------------------------------

namespace {

// One tick before, at, and one tick after the start of a frame; a tick before frame 0 belongs to frame 0 too.
void expectBoundary(CheckRun& run, const Film& film, std::int64_t index, const Seen& before, const Seen& from) {
    const std::string frame = "the start of frame " + std::to_string(index) + " (tick " +
                              std::to_string(film.startOf(index)) + ")";
    run.expectEqual("one tick before " + frame, film.at(film.startOf(index) - 1, film.firstFormat()), before);
    run.expectEqual("at " + frame, film.at(film.startOf(index), film.firstFormat()), from);
    if (film.ticksPerFrame() > 1) {
        run.expectEqual("one tick after " + frame, film.at(film.startOf(index) + 1, film.firstFormat()), from);
    }
}

}  // namespace

void frameBoundaries(CheckRun& run) {
    forEachFilm(run, Films::DamagedToo, [&](const Film& film) {
        for (const std::int64_t index : spread(film.frames() + 1, frameBudget(run, film, 6, 60))) {
            const Seen before = film.frame(std::max<std::int64_t>(index - 1, 0));
            const Seen from = index < film.frames() ? film.frame(index) : refusal(imFrameNotFound);
            expectBoundary(run, film, index, before, from);
        }
    });
}

// --- frame-rates ------------------------------------------------------------------------------------------------

namespace {

struct Rate {
    std::uint32_t rate;
    std::uint32_t scale;
};

constexpr Rate kRates[] = {
    {24000, 1001}, {30000, 1001}, {60000, 1001}, {24, 1}, {25, 1}, {11, 1}, {7, 3}, {997, 31}, {15, 2}, {1, 1},
    {1, 1000}, {1, 3000000}, {1000000, 1}, {2147483647, 1}, {2147483647, 3},
    {0, 1}, {25, 0}, {0, 0},                                                    // none stated: 30 a second
    // Beyond ticks of 64 bits:
    {2147483629, 71582791}, {1, 36000000}, {1, 2147483647}, {4294967295, 1}, {25, 4294967295},
};

// Puts a rate into the stream header, where the sample writer would refuse it.
void putRate(aviwriter::Bytes& bytes, const Rate& rate) {
    const std::size_t data = positionOf(bytes, "strh") + 8;
    put32(bytes, data + 20, rate.scale);
    put32(bytes, data + 24, rate.rate);
}

Rate described(const Rate& rate) { return rate.rate == 0 || rate.scale == 0 ? Rate{30, 1} : rate; }

std::string rateText(const Rate& rate) { return std::to_string(rate.rate) + "/" + std::to_string(rate.scale); }

void expectRate(CheckRun& run, OpenClip& clip, const Rate& rate) {
    const Rate wanted = described(rate);
    const Rate found = {static_cast<std::uint32_t>(clip.info().vidScale),
                        static_cast<std::uint32_t>(clip.info().vidSampleSize)};
    run.expectEqual("the rate that the clip is described with", rateText(found), rateText(wanted));
}

// The same five pictures are in every one of these clips.
void expectFrames(CheckRun& run, const Film& film, const std::vector<Seen>& pictures) {
    for (std::int64_t index = 0; index <= kOwnFrames; ++index) {
        const auto number = static_cast<std::size_t>(index);
        const Seen& before = pictures[number == 0 ? 0 : number - 1];
        expectBoundary(run, film, index, before, index < kOwnFrames ? pictures[number] : refusal(imFrameNotFound));
    }
}

// Times mean nothing here: whatever is answered, it must be an answer.
void askAnything(OpenClip& clip) {
    if (clip.formats().empty()) {
        return;
    }
    for (const PrTime time : {PrTime{0}, PrTime{1}, PrTime{-1}, PrTime{1} << 40, -(PrTime{1} << 40),
                              std::numeric_limits<PrTime>::max(), std::numeric_limits<PrTime>::min()}) {
        clip.session().frame(time, {clip.wanted()});
    }
}

std::vector<Seen> picturesOf(const Film& film) {
    std::vector<Seen> pictures;
    for (std::int64_t index = 0; index < film.frames(); ++index) {
        pictures.push_back(film.frame(index));
    }
    return pictures;
}

void lookAtRates(CheckRun& run, const hostkit::HostProfile& profile) {
    PlayedPlugin plugin(run, profile);
    const auto plain = openOwn(plugin, writeOwn(run, "pictures.avi", ownSample()));
    const auto plainFilm = plain ? Film::of(*plain) : std::nullopt;
    if (!plainFilm || plainFilm->frames() != kOwnFrames) {
        run.fail("the five frames at 25 a second are not described so");
        return;
    }
    const std::vector<Seen> pictures = picturesOf(*plainFilm);
    for (const Rate& rate : kRates) {
        const Clip written = writeOwn(run, "rate.avi", ownSample(), [&](auto& bytes) { putRate(bytes, rate); });
        const auto clip = openOwn(plugin, written);
        run.step(rateText(rate) + " frames a second, " + std::to_string(profile.ticksPerSecond) + " ticks");
        if (!clip) {
            continue;
        }
        expectRate(run, *clip, rate);
        const auto film = Film::of(*clip);
        film ? expectFrames(run, *film, pictures) : askAnything(*clip);
    }
    run.step("");
}

}  // namespace

void frameRates(CheckRun& run) {
    lookAtRates(run, hostkit::hostProfiles().front());
    if (run.level() >= 5) {
        lookAtRates(run, hostkit::hostProfile("coarse-ticks"));
    }
}

}  // namespace importhost::validate
