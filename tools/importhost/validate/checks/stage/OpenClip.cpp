#include "importhost/validate/checks/stage/OpenClip.h"

#include "hostkit/sessions/Names.h"
#include "importhost/pictures/Picture.h"
#include "importhost/validate/checks/stage/Digest.h"

#include <algorithm>

namespace importhost::validate {

namespace {

// Pixels that one check of one clip may ask for, so that a user's big pictures take seconds and not minutes.
constexpr std::int64_t kMostPixels = 60'000'000;

}  // namespace

OpenClip::OpenClip(PlayedPlugin& plugin, const Clip& clip)
    : m_clip(clip),
      m_ticksPerSecond(plugin.host().profile().ticksPerSecond),
      m_session(plugin.session(), clip.path),
      m_openResult(m_session.open().result) {
    if (m_openResult == imNoErr) {
        m_info = m_session.info(0);
    }
}

bool OpenClip::isDescribed() const {
    return m_openResult == imNoErr && m_info && hostkit::isDescribed(m_info->result);
}

bool OpenClip::has(Need need) const {
    switch (need) {
        case Need::Pictures: return info().hasVideo != 0 && frameCount() > 0;
        case Need::Sound: return info().hasAudio != 0 && info().audInfo.numChannels > 0 && info().audDuration > 0;
        default: return true;
    }
}

std::int64_t OpenClip::pixels() const {
    return std::max<std::int64_t>(
        1, std::int64_t{info().vidInfo.imageWidth} * std::int64_t{info().vidInfo.imageHeight});
}

PrTime OpenClip::timeOf(std::int64_t index) const { return hostkit::timeOfFrame(info(), index, m_ticksPerSecond); }

const std::vector<PrPixelFormat>& OpenClip::formats() {
    if (!m_formats) {
        m_formats = m_session.pixelFormats();
    }
    return *m_formats;
}

imFrameFormat OpenClip::wanted(PrPixelFormat format) const {
    return {info().vidInfo.imageWidth, info().vidInfo.imageHeight, static_cast<csSDK_uint32>(format)};
}

hostkit::FrameAnswer OpenClip::frame(std::int64_t index, PrPixelFormat format) {
    return m_session.frame(timeOf(index), {wanted(format)});
}

namespace {

std::string refusalOf(const OpenClip& clip) {
    return clip.openResult() != imNoErr ? "the plug-in does not open it: " + hostkit::resultText(clip.openResult())
                                        : "the plug-in does not describe it: " + hostkit::resultText(clip.infoResult());
}

// Null for a clip that does not serve.
std::unique_ptr<OpenClip> openFor(CheckRun& run, PlayedPlugin& plugin, const Clip& clip, Need need) {
    run.step(clip.name);
    auto open = std::make_unique<OpenClip>(plugin, clip);
    if (!open->isDescribed()) {
        if (clip.kind == ClipKind::Good) {
            run.fail(refusalOf(*open));
        } else if (clip.kind == ClipKind::Unknown) {
            run.note(refusalOf(*open));
        }
        return nullptr;
    }
    return open->has(need) && (need != Need::Pictures || !open->formats().empty()) ? std::move(open) : nullptr;
}

std::string noneText(Need need) {
    switch (need) {
        case Need::Pictures: return "no file with pictures that the plug-in opens";
        case Need::Sound: return "no file with sound that the plug-in opens";
        default: return "no file that the plug-in opens";
    }
}

}  // namespace

void forEachClip(CheckRun& run, PlayedPlugin& plugin, Need need, const std::function<void(OpenClip&)>& look) {
    bool any = false;
    for (const Clip& clip : run.clips()) {
        if (const auto open = openFor(run, plugin, clip, need)) {
            any = true;
            look(*open);
        }
    }
    run.step("");
    if (!any && !run.hasFailed()) {
        run.skip(noneText(need));
    }
}

std::unique_ptr<OpenClip> firstClip(CheckRun& run, PlayedPlugin& plugin, Need need) {
    for (const Clip& clip : run.clips()) {
        if (auto open = openFor(run, plugin, clip, need)) {
            return open;
        }
    }
    run.skip(noneText(need));
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
