// A clip opened for its pictures: the first stream's information, the offered formats, frames by number.
#pragma once

#include "hostkit/sessions/ClipSession.h"
#include "importhost/clips/Editor.h"

#include <filesystem>
#include <string>
#include <vector>

namespace importhost {

// A clip that cannot be used, in words that name the file and the plug-in's answer.
struct ClipFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class VideoClip {
public:
    // Opens the clip as the editor does. Throws ClipFailure when the plug-in refuses it or finds no pictures in it.
    VideoClip(Editor& editor, const std::filesystem::path& path);

    const imFileInfoRec8& info() const { return *m_info->record.get(); }
    std::int64_t frameCount() const { return hostkit::frameCount(info()); }
    const std::vector<PrPixelFormat>& formats() const { return m_formats; }

    // Throws ClipFailure for a clip without any.
    void requireFrames() const;

    hostkit::FrameAnswer frame(std::int64_t index, PrPixelFormat format);

    // What frame() asks for, for those who ask in another way: the time in host ticks, and the format at the video's
    // own size.
    PrTime timeOf(std::int64_t index) const;
    imFrameFormat wanted(PrPixelFormat format) const;
    hostkit::ClipSession& session() { return m_clip; }

    // Seconds from the start of the clip.
    double secondsOf(std::int64_t index) const;

private:
    std::filesystem::path m_path;
    hostkit::ClipSession m_clip;
    PrTime m_ticksPerSecond;
    std::optional<hostkit::Answer<imFileInfoRec8>> m_info;
    std::vector<PrPixelFormat> m_formats;
};

}  // namespace importhost
