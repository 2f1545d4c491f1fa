#include "importhost/validate/checks/state/StateModel.h"

#include "sdk/SdkAsyncImporter.h"

#include <algorithm>

namespace importhost::validate {

csSDK_int32 asyncResultFor(csSDK_int32 result) {
    switch (result) {
        case imNoErr: return aiNoError;
        case kExceptionResult: return kExceptionResult;
        default: return aiUnknownError;
    }
}

// --- KnownFile --------------------------------------------------------------------------------------------------

KnownFile::KnownFile(PlayedPlugin& plugin, const Clip& clip) : m_clip(&clip) {
    hostkit::ClipSession session(plugin.session(), clip.path);
    m_opened = session.open().result;
    if (m_opened != imNoErr) {
        return;
    }
    const std::size_t streams = session.infos().size();
    for (std::size_t stream = 0; stream < streams + 1; ++stream) {
        const auto answer = session.info(static_cast<csSDK_int32>(stream));
        m_streams.push_back({outcomeOf(answer), *answer.record});
    }
    if (hostkit::isDescribed(m_streams.front().described.result) && m_streams.front().info.hasVideo) {
        session.info(0);
        m_formats = session.pixelFormats();
    }
}

csSDK_int32 KnownFile::createdAsync() const {
    const csSDK_int32 result = m_streams.front().described.result;
    return hostkit::isDescribed(result) ? csSDK_int32{imNoErr} : result;
}

const Outcome* KnownFile::frame(const FrameWish& wish) const {
    const auto found = m_frames.find(wish.key());
    return found == m_frames.end() ? nullptr : &found->second;
}

const Outcome& KnownFile::remembered(const std::string& what, const Outcome& outcome) {
    return m_others.emplace(what, outcome).first->second;
}

// --- The states -------------------------------------------------------------------------------------------------

void ClipState::describe(std::size_t index, const KnownFile::Stream& known) {
    const bool succeeded = hostkit::isDescribed(known.described.result);
    stream = succeeded ? std::optional(index) : std::nullopt;
    hasVideo = succeeded && known.info.hasVideo != 0;
    hasAudio = succeeded && known.info.hasAudio != 0;
    soundPosition = 0;
}

void AnnouncedFrames::doubtAll() {
    for (Announced& announced : m_frames) {
        announced.isSure = false;
    }
}

Announced AnnouncedFrames::take(const FrameWish& wish) {
    const auto found = std::find_if(m_frames.begin(), m_frames.end(), [&](const Announced& announced) {
        return announced.wish.frame == wish.frame;
    });
    if (found == m_frames.end()) {
        return {wish, true};
    }
    const Announced taken = *found;
    m_frames.erase(found);
    return taken;
}

}  // namespace importhost::validate
