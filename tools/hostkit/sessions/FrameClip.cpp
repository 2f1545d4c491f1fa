#include "hostkit/sessions/FrameClip.h"

namespace hostkit {

FrameClip::FrameClip(ImporterSession& session, const std::filesystem::path& path)
    : m_session(session, path),
      m_ticksPerSecond(session.host().profile().ticksPerSecond),
      m_openResult(m_session.open().result),
      m_info(m_openResult == imNoErr ? m_session.info(0)
                                    : Answer<imFileInfoRec8>{imOtherErr, HostRecord<imFileInfoRec8>(), {}}) {}

const std::vector<PrPixelFormat>& FrameClip::formats() {
    if (m_formats.empty()) {
        m_formats = m_session.pixelFormats();
    }
    return m_formats;
}

PrTime FrameClip::timeOf(std::int64_t frame) const { return timeOfFrame(info(), frame, m_ticksPerSecond); }

imFrameFormat FrameClip::wanted(PrPixelFormat format) const {
    return {info().vidInfo.imageWidth, info().vidInfo.imageHeight, static_cast<csSDK_uint32>(format)};
}

FrameAnswer FrameClip::frame(std::int64_t index, PrPixelFormat format) {
    return m_session.frame(timeOf(index), {wanted(format)});
}

AudioAnswer FrameClip::sound(PrAudioSample position, csSDK_uint32 count) {
    return m_session.audio(position, count, info().audInfo.numChannels);
}

}  // namespace hostkit
