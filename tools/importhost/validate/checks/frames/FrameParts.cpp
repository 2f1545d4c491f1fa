#include "importhost/validate/checks/frames/FrameParts.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <iomanip>
#include <limits>
#include <sstream>

namespace importhost::validate {

namespace {

// A frame's duration as this importer counts it: cut to whole ticks.
std::optional<PrTime> ticksPerFrameOf(const imFileInfoRec8& info, PrTime ticksPerSecond) {
    const PrTime rate = info.vidScale;
    const PrTime scale = info.vidSampleSize;
    if (rate <= 0 || scale <= 0 || ticksPerSecond > std::numeric_limits<PrTime>::max() / scale) {
        return std::nullopt;
    }
    const PrTime ticks = scale * ticksPerSecond / rate;
    const PrTime spareFrames = 2 * hostkit::frameCount(info) + 2;
    return ticks > 0 && ticks <= std::numeric_limits<PrTime>::max() / spareFrames ? std::optional(ticks) : std::nullopt;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Seen& seen) {
    if (seen.result != imNoErr) {
        return out << hostkit::resultText(seen.result);
    }
    std::ostringstream digest;
    digest << std::hex << std::setfill('0') << std::setw(16) << seen.digest;
    return out << "a picture (" << hostkit::codeText(seen.format) << ", " << seen.width << " x " << seen.height
               << ", pixels " << digest.str().substr(0, 8) << ")";
}

Seen seen(const hostkit::FrameAnswer& answer) {
    const auto view = answer.frame.view();
    if (!view) {
        return refusal(answer.result);
    }
    return {answer.result, static_cast<std::uint32_t>(view->format), view->width(), view->height(),
            digestOf(answer.frame)};
}

// --- Films ------------------------------------------------------------------------------------------------------

std::optional<Film> Film::of(OpenClip& clip) {
    const auto ticks = ticksPerFrameOf(clip.info(), clip.plugin().host().profile().ticksPerSecond);
    return ticks ? std::optional(Film(clip, *ticks)) : std::nullopt;
}

Seen Film::at(PrTime time, PrPixelFormat format) const {
    return seen(m_clip->session().frame(time, {m_clip->wanted(format)}));
}

void forEachFilm(PlayedPlugin& plugin, Films films, const std::function<void(const Film&)>& look) {
    bool any = false;
    forEachClip(plugin, Need::Pictures, [&](OpenClip& clip) {
        const bool fits = films == Films::DamagedToo || clip.clip().kind != ClipKind::Damaged;
        if (const auto film = fits ? Film::of(clip) : std::nullopt) {
            any = true;
            look(*film);
        }
    });
    if (!any && !plugin.run().hasFailed()) {
        plugin.run().skip("no file with pictures whose frames can be counted in ticks");
    }
}

void forEachFilm(CheckRun& run, Films films, const std::function<void(const Film&)>& look) {
    PlayedPlugin plugin(run);
    forEachFilm(plugin, films, look);
}

std::vector<std::int64_t> spread(std::int64_t count, int most) {
    const std::int64_t wanted = std::min<std::int64_t>(count, most);
    std::vector<std::int64_t> numbers;
    for (std::int64_t i = 0; i < wanted; ++i) {
        numbers.push_back(wanted == 1 ? 0 : i * (count - 1) / (wanted - 1));
    }
    return numbers;
}

bool expectDelivered(CheckRun& run, const Film& film, const std::string& what, const Seen& found) {
    const std::string otherwise = what + " is not delivered: " + hostkit::resultText(found.result);
    const bool canBeDamage = found.result == imFileReadFailed || found.result == imBadCompression;
    return canBeDamage ? run.expectOf(film.clip().clip(), false, otherwise)
                       : run.expect(found.result == imNoErr, otherwise);
}

std::string frameText(std::int64_t index, PrPixelFormat format) {
    return "frame " + std::to_string(index) + " in " + hostkit::codeText(static_cast<csSDK_uint32>(format));
}

// --- Own samples ------------------------------------------------------------------------------------------------

aviwriter::SampleOptions ownSample(std::uint32_t rate, std::uint32_t scale, std::set<std::uint32_t> dropped) {
    aviwriter::SampleOptions options;
    options.width = 32;
    options.height = 16;
    options.frames = kOwnFrames;
    options.rate = rate;
    options.scale = scale;
    options.dropped = std::move(dropped);
    return options;
}

std::unique_ptr<OpenClip> openOwn(PlayedPlugin& plugin, const Clip& clip) {
    CheckRun& run = plugin.run();
    run.step(clip.name);
    auto open = std::make_unique<OpenClip>(plugin, clip);
    if (open->isDescribed() && (open->info().hasVideo == 0 || !open->formats().empty())) {
        return open;
    }
    if (!run.hasOwnSamples()) {
        run.skip(kOwnSamplesAreForeign);
    }
    run.fail(open->refusal());
    return nullptr;
}

}  // namespace importhost::validate
