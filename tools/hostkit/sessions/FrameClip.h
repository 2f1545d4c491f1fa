// A clip whose frames are requested by number: opened, and its first stream described, as the editor does before it
// plays a clip.
#pragma once

#include "hostkit/sessions/ClipSession.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace hostkit {

class FrameClip {
public:
    // Opens the file and describes stream 0. No failure throws: see isDescribed(). The session must outlive the clip.
    FrameClip(ImporterSession& session, const std::filesystem::path& path);

    csSDK_int32 openResult() const { return m_openResult; }
    csSDK_int32 infoResult() const { return m_info.result; }    // imOtherErr if the clip did not open
    bool isDescribed() const { return hostkit::isDescribed(m_info.result); }
    ClipSession& session() { return m_session; }

    // Zeros if the clip is not described.
    const imFileInfoRec8& info() const { return *m_info.record; }
    std::int64_t frameCount() const { return hostkit::frameCount(info()); }

    // The offered formats in the plug-in's order; requested once.
    const std::vector<PrPixelFormat>& formats();

    // The start of a frame in host ticks, and a format at the clip's own size; by default the first one offered.
    PrTime timeOf(std::int64_t frame) const;
    imFrameFormat wanted(PrPixelFormat format) const;
    imFrameFormat wanted() { return wanted(formats().front()); }

    // A frame at the clip's own size; without a format, in the first one offered.
    FrameAnswer frame(std::int64_t index, PrPixelFormat format);
    FrameAnswer frame(std::int64_t index) { return frame(index, formats().front()); }

    // `count` sample frames of stream 0 from `position`, in all of its channels.
    AudioAnswer sound(PrAudioSample position, csSDK_uint32 count);

private:
    ClipSession m_session;
    PrTime m_ticksPerSecond;
    csSDK_int32 m_openResult;
    Answer<imFileInfoRec8> m_info;
    std::vector<PrPixelFormat> m_formats;
};

}  // namespace hostkit
