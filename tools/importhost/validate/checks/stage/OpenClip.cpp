#include "importhost/validate/checks/stage/OpenClip.h"

#include "hostkit/sessions/Names.h"
#include "importhost/pictures/Picture.h"
#include "importhost/validate/checks/stage/Digest.h"

#include <algorithm>

namespace importhost::validate {

namespace {

// The most pixels that one check may request of one clip: a user's big pictures must take seconds, not minutes.
constexpr std::int64_t kMostPixels = 60'000'000;

}  // namespace

bool OpenClip::has(Need need) {
    if (!isDescribed()) {
        return false;
    }
    switch (need) {
        case Need::Pictures: return info().hasVideo != 0 && frameCount() > 0 && !formats().empty();
        case Need::Sound: return info().hasAudio != 0 && info().audInfo.numChannels > 0 && info().audDuration > 0;
        default: return true;
    }
}

std::int64_t OpenClip::pixels() const {
    return std::max<std::int64_t>(
        1, std::int64_t{info().vidInfo.imageWidth} * std::int64_t{info().vidInfo.imageHeight});
}

std::string OpenClip::refusal() const {
    return openResult() != imNoErr ? "the plug-in does not open it: " + hostkit::resultText(openResult())
                                   : "the plug-in does not describe it: " + hostkit::resultText(infoResult());
}

namespace {

// Returns null for a clip that lacks what is needed.
std::unique_ptr<OpenClip> openFor(PlayedPlugin& plugin, const Clip& clip, Need need) {
    CheckRun& run = plugin.run();
    run.step(clip.name);
    auto open = std::make_unique<OpenClip>(plugin, clip);
    if (!open->isDescribed() && clip.kind == ClipKind::Good) {
        run.fail(open->refusal());
    } else if (!open->isDescribed() && clip.kind == ClipKind::Unknown) {
        run.note(open->refusal());
    }
    return open->has(need) ? std::move(open) : nullptr;
}

[[noreturn]] void skipWithout(CheckRun& run, Need need) {
    switch (need) {
        case Need::Pictures: run.skip("no file with pictures that the plug-in opens");
        case Need::Sound: run.skip("no file with sound that the plug-in opens");
        default: run.skip("no file that the plug-in opens");
    }
}

}  // namespace

void forEachClip(PlayedPlugin& plugin, Need need, const std::function<void(OpenClip&)>& look) {
    CheckRun& run = plugin.run();
    bool any = false;
    for (const Clip& clip : run.clips()) {
        if (const auto open = openFor(plugin, clip, need)) {
            any = true;
            look(*open);
        }
    }
    run.step("");
    if (!any && !run.hasFailed()) {
        skipWithout(run, need);
    }
}

void forEachClip(CheckRun& run, Need need, const std::function<void(OpenClip&)>& look) {
    PlayedPlugin plugin(run);
    forEachClip(plugin, need, look);
}

std::unique_ptr<OpenClip> firstClip(PlayedPlugin& plugin, Need need) {
    for (const Clip& clip : plugin.run().clips()) {
        if (auto open = openFor(plugin, clip, need)) {
            return open;
        }
    }
    skipWithout(plugin.run(), need);
}

void refocus(OpenClip& clip) {
    clip.plugin().run().expectResult("the answer to quieting it", clip.session().quiet());
    clip.plugin().run().expectResult("the answer to opening it again", clip.session().open().result);
}

int frameBudget(const CheckRun& run, const OpenClip& clip, int atLowest, int atHighest) {
    const std::int64_t affordable = std::max<std::int64_t>(2, kMostPixels / clip.pixels());
    return static_cast<int>(std::min<std::int64_t>(affordable, run.effort(atLowest, atHighest)));
}

std::vector<std::uint8_t> pixelsOf(const hostkit::HostFrame& frame) {
    const auto view = frame.view();
    return view ? rowsOf(*view) : std::vector<std::uint8_t>{};
}

std::uint64_t digestOf(const hostkit::HostFrame& frame) {
    const std::vector<std::uint8_t> pixels = pixelsOf(frame);
    return Digest().add(pixels.data(), pixels.size()).value();
}

}  // namespace importhost::validate
