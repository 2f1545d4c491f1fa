// A clip opened for its pictures.
#pragma once

#include "hostkit/sessions/FrameClip.h"
#include "importhost/clips/Editor.h"

#include <filesystem>
#include <stdexcept>

namespace importhost {

// A clip that cannot be used; the text names the file and the plug-in's answer.
struct ClipFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class VideoClip : public hostkit::FrameClip {
public:
    // Throws ClipFailure if the plug-in refuses the file or finds no pictures in it.
    VideoClip(Editor& editor, const std::filesystem::path& path);

    // Throws ClipFailure for a clip without any.
    void requireFrames() const;

    // Seconds from the start of the clip.
    double secondsOf(std::int64_t index) const;

private:
    std::filesystem::path m_path;
};

}  // namespace importhost
