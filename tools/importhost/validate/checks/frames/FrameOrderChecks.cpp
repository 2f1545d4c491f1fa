// A frame is the same whatever was asked before it.
#include "importhost/validate/checks/frames/FrameParts.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>

namespace importhost::validate {

namespace {

std::vector<Seen> lookAt(const Film& film, const std::vector<std::int64_t>& frames) {
    std::vector<Seen> pictures;
    for (const std::int64_t index : frames) {
        pictures.push_back(film.frame(index));
    }
    return pictures;
}

}  // namespace

// --- frame-repeats ----------------------------------------------------------------------------------------------

namespace {

// The editor keeps frames in its cache while it asks for the next ones.
void expectHeldFramesToLast(CheckRun& run, const Film& film) {
    std::vector<hostkit::FrameAnswer> held;
    std::vector<Seen> before;
    for (const std::int64_t index : spread(film.frames(), std::min(frameBudget(run, film, 3, 8), 8))) {
        held.push_back(film.clip().frame(index));
        before.push_back(seen(held.back()));
    }
    for (std::size_t i = 0; i < held.size(); ++i) {
        run.expectEqual("the frame asked for as number " + std::to_string(i + 1) + " after the following ones",
                        seen(held[i]), before[i]);
    }
}

}  // namespace

void frameRepeats(CheckRun& run) {
    forEachFilm(run, Films::Whole, [&](const Film& film) {
        for (const std::int64_t index : spread(film.frames(), std::min(frameBudget(run, film, 2, 12), 12))) {
            for (const PrPixelFormat format : film.clip().formats()) {
                const Seen first = film.frame(index, format);
                expectDelivered(run, film, frameText(index, format), first);
                run.expectEqual(frameText(index, format) + " for the second time", film.frame(index, format), first);
            }
        }
        expectHeldFramesToLast(run, film);
    });
}

// --- frame-seeks ------------------------------------------------------------------------------------------------

void frameSeeks(CheckRun& run) {
    forEachFilm(run, Films::DamagedToo, [&](const Film& film) {
        const std::vector<std::int64_t> frames = spread(film.frames(), frameBudget(run, film, 8, 60));
        const std::vector<Seen> linear = lookAt(film, frames);
        const auto expectFrame = [&](std::size_t i, const char* how) {
            run.expectEqual(frameText(frames[i], film.firstFormat()) + how, film.frame(frames[i]), linear[i]);
        };
        for (std::size_t i = frames.size(); i-- > 0;) {
            expectFrame(i, ", going backwards");
        }
        for (int turn = frameBudget(run, film, 10, 200); turn > 0; --turn) {
            expectFrame(run.below(frames.size()), ", jumped to");
        }
    });
}

// --- frame-dropped ----------------------------------------------------------------------------------------------

namespace {

std::set<std::int64_t> droppedOf(OpenClip& clip) {
    std::set<std::int64_t> dropped;
    const hostkit::DataRateAnswer answer = clip.session().dataRate();
    for (std::size_t i = 0; i < answer.samples.size(); ++i) {
        if (answer.samples[i].samplesize == 0) {
            dropped.insert(static_cast<std::int64_t>(i));
        }
    }
    return dropped;
}

// The nearest frame before it that is there, else the nearest one after it; -1 when there is none.
std::int64_t substituteOf(std::int64_t index, const std::set<std::int64_t>& dropped, std::int64_t frames) {
    for (std::int64_t earlier = index; earlier >= 0; --earlier) {
        if (!dropped.contains(earlier)) {
            return earlier;
        }
    }
    for (std::int64_t later = index + 1; later < frames; ++later) {
        if (!dropped.contains(later)) {
            return later;
        }
    }
    return -1;
}

void expectSubstitutes(CheckRun& run, const Film& film, const std::set<std::int64_t>& dropped, int most) {
    for (const std::int64_t index : dropped) {
        if (most-- == 0) {
            return;
        }
        const std::int64_t substitute = substituteOf(index, dropped, film.frames());
        const Seen wanted = substitute < 0 ? refusal(imFrameNotFound) : film.frame(substitute);
        run.expectEqual("frame " + std::to_string(index) + ", which is empty and stands for " +
                            (substitute < 0 ? "none" : "frame " + std::to_string(substitute)),
                        film.frame(index), wanted);
    }
}

// Every way in which some of five frames can be empty.
void expectSubstitutesInOwnClips(CheckRun& run) {
    PlayedPlugin plugin(run);
    const unsigned everyWay = 1U << kOwnFrames;
    for (unsigned way = 1; way < everyWay; way += run.level() >= 5 || way + 1 == everyWay ? 1 : 5) {
        std::set<std::uint32_t> written;
        for (std::uint32_t index = 0; index < kOwnFrames; ++index) {
            if ((way >> index & 1U) != 0) {
                written.insert(index);
            }
        }
        const auto clip = openOwn(plugin, writeOwn(run, "empty-frames.avi", ownSample(25, 1, written)));
        const auto film = clip ? Film::of(*clip) : std::nullopt;
        if (film && run.expectEqual("the number of its frames", film->frames(), std::int64_t{kOwnFrames})) {
            expectSubstitutes(run, *film, {written.begin(), written.end()}, kOwnFrames);
        }
    }
}

}  // namespace

void frameDropped(CheckRun& run) {
    bool any = false;
    forEachFilm(run, Films::DamagedToo, [&](const Film& film) {
        const std::set<std::int64_t> dropped = droppedOf(film.clip());
        any = any || !dropped.empty();
        expectSubstitutes(run, film, dropped, frameBudget(run, film, 8, 40));
    });
    if (run.hasOwnSamples()) {
        expectSubstitutesInOwnClips(run);
    } else if (!any) {
        run.note("no file with empty frames");
    }
}

// --- frame-two-clips --------------------------------------------------------------------------------------------

namespace {

// Returns null for a clip that is no film.
std::unique_ptr<OpenClip> openFilm(PlayedPlugin& plugin, const Clip& clip) {
    auto open = std::make_unique<OpenClip>(plugin, clip);
    return open->has(Need::Pictures) && Film::of(*open) ? std::move(open) : nullptr;
}

// Like the first samples in all but its pictures: the first ones are those that others have later.
aviwriter::SampleOptions withOtherPictures() {
    aviwriter::SampleOptions options = ownSample(25, 1, {0, 1, 2, 3, 4, 5});
    options.width = 48;
    options.height = 32;
    options.frames = 12;
    return options;
}

// The clips to play side by side, opened; a user's only one twice.
std::vector<std::unique_ptr<OpenClip>> openFilms(CheckRun& run, PlayedPlugin& plugin, const Clip& others) {
    std::vector<std::unique_ptr<OpenClip>> opened;
    const auto add = [&](const Clip& clip) {
        if (auto film = openFilm(plugin, clip)) {
            opened.push_back(std::move(film));
        }
    };
    if (run.hasOwnSamples()) {
        add(others);
    }
    const auto most = static_cast<std::size_t>(run.effort(2, 6));
    for (const Clip& clip : run.clips()) {
        if (opened.size() < most) {
            add(clip);
        }
    }
    if (opened.size() == 1) {
        add(opened.front()->clip());
    }
    if (opened.size() < 2) {
        run.skip("no file with pictures that the plug-in opens");
    }
    return opened;
}

}  // namespace

void frameTwoClips(CheckRun& run) {
    PlayedPlugin plugin(run);
    const Clip others = writeOwn(run, "other-pictures.avi", withOtherPictures());
    const auto opened = openFilms(run, plugin, others);
    struct Reel {
        Film film;
        std::vector<std::int64_t> frames;
        std::vector<Seen> alone;
    };
    std::vector<Reel> reels;
    for (const auto& clip : opened) {
        const Film film = *Film::of(*clip);
        const auto frames = spread(film.frames(), frameBudget(run, film, 6, 20));
        reels.push_back({film, frames, lookAt(film, frames)});
    }
    for (int turn = frameBudget(run, reels.front().film, 40, 300); turn > 0; --turn) {
        const Reel& reel = reels[run.below(reels.size())];
        const std::size_t i = run.below(reel.frames.size());
        run.expectEqual(reel.film.clip().clip().name + ", " + frameText(reel.frames[i], reel.film.firstFormat()) +
                            ", while other clips are played",
                        reel.film.frame(reel.frames[i]), reel.alone[i]);
    }
}

// --- frame-after-quiet ------------------------------------------------------------------------------------------

void frameAfterQuiet(CheckRun& run) {
    forEachFilm(run, Films::DamagedToo, [&](const Film& film) {
        const std::vector<std::int64_t> frames = spread(film.frames(), frameBudget(run, film, 3, 12));
        const std::vector<Seen> before = lookAt(film, frames);
        for (const bool asksAgain : {false, true}) {
            refocus(film.clip());
            if (asksAgain) {
                film.clip().session().info(0);
            }
            for (std::size_t i = 0; i < frames.size(); ++i) {
                run.expectEqual(frameText(frames[i], film.firstFormat()) + " after quiet and reopening" +
                                    (asksAgain ? " and being described again" : ""),
                                film.frame(frames[i]), before[i]);
            }
        }
    });
}

}  // namespace importhost::validate
