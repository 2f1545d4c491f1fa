#include "importhost/validate/checks/host/OddTicks.h"

#include "hostkit/sessions/Names.h"
#include "importhost/validate/checks/stage/OpenClip.h"

#include <algorithm>
#include <limits>

namespace importhost::validate {

namespace {

constexpr PrTime kMost = std::numeric_limits<PrTime>::max();

struct TicksRow {
    PrTime ticksPerSecond;
    const char* words;
};

constexpr TicksRow kTicks[] = {
    {600, "600 ticks a second"},
    {1000, "1000 ticks a second"},
    {90001, "a prime number of ticks a second"},
    {254016000001, "a tick a second more than usual"},
    {1, "one tick a second"},
    {0, "no ticks"},
    {-1000, "time that runs backwards"},
    {std::numeric_limits<PrTime>::max(), "more ticks a second than 64 bits can multiply"},
    {std::numeric_limits<PrTime>::min(), "as many ticks backwards"},
};

hostkit::HostProfile profileOf(const TicksRow& row) {
    hostkit::HostProfile profile;
    profile.name = row.words;
    profile.ticksPerSecond = row.ticksPerSecond;
    return profile;
}

// The whole ticks that a frame lasts; nothing if the product overflows, or if a frame lasts less than a tick.
std::optional<PrTime> ticksPerFrame(const imFileInfoRec8& info, PrTime ticksPerSecond) {
    const PrTime scale = info.vidSampleSize;
    if (scale <= 0 || info.vidScale <= 0 || ticksPerSecond > kMost / scale || ticksPerSecond < -(kMost / scale)) {
        return std::nullopt;
    }
    const PrTime ticks = scale * ticksPerSecond / info.vidScale;
    return ticks == 0 ? std::nullopt : std::optional(ticks);
}

using Pixels = std::vector<std::uint8_t>;

// A user's file may have frames that cannot be had; they must be refused with any ticks.
struct Picture {
    std::int64_t index = 0;
    csSDK_int32 result = 0;
    Pixels pixels;
};

struct Pictures {
    PrPixelFormat format = PrPixelFormat_Invalid;
    std::vector<Picture> frames;
};

// As the usual host gets them.
Pictures usualPictures(CheckRun& run) {
    PlayedPlugin plugin(run);
    const auto clip = firstClip(plugin, Need::Pictures);
    Pictures pictures;
    pictures.format = clip->formats().front();
    const std::int64_t last = clip->frameCount() - 1;
    for (const std::int64_t index : {std::int64_t{0}, std::min<std::int64_t>(1, last), last / 2, last}) {
        const hostkit::FrameAnswer answer = clip->frame(index, pictures.format);
        pictures.frames.push_back({index, answer.result, pixelsOf(answer.frame)});
    }
    return pictures;
}

// Whether the whole frame lies within times of 64 bits.
bool hasTimes(std::int64_t index, PrTime ticksPerFrame) {
    return index < kMost / (ticksPerFrame < 0 ? -ticksPerFrame : ticksPerFrame);
}

void expectPicture(CheckRun& run, OpenClip& clip, PrPixelFormat format, const Picture& usual, PrTime time) {
    const auto answer = clip.session().frame(time, {clip.wanted(format)});
    const std::string frame = "frame " + std::to_string(usual.index) + " at tick " + std::to_string(time);
    if (run.expectResult(frame, answer.result, usual.result)) {
        run.expect(pixelsOf(answer.frame) == usual.pixels, frame + " is another picture than with usual ticks");
    }
}

void lookWith(CheckRun& run, const TicksRow& row, const Pictures& usual) {
    PlayedPlugin plugin(run, profileOf(row));
    const auto clip = firstClip(plugin, Need::Pictures);
    run.step(clip->clip().name + ", " + row.words);
    const std::optional<PrTime> duration = ticksPerFrame(clip->info(), row.ticksPerSecond);
    for (const Picture& picture : usual.frames) {
        if (duration && hasTimes(picture.index, *duration)) {
            const PrTime start = picture.index * *duration;
            expectPicture(run, *clip, usual.format, picture, start);
            expectPicture(run, *clip, usual.format, picture, start + *duration - (*duration > 0 ? 1 : -1));
        } else {
            // Which frame is meant nobody can tell; that the answer is one is all that there is to ask for.
            const csSDK_int32 result = clip->session().frame(picture.index, {clip->wanted(usual.format)}).result;
            run.expect(hostkit::resultName(result) != "unknown" && result != hostkit::kEscapedException,
                       "a frame was answered with " + hostkit::resultText(result));
        }
    }
    run.expectResult("the answer to closing it", clip->session().close());
}

}  // namespace

void oddTicks(CheckRun& run) {
    const Pictures usual = usualPictures(run);
    for (const TicksRow& row : kTicks) {
        lookWith(run, row, usual);
    }
    run.step("");
}

}  // namespace importhost::validate
