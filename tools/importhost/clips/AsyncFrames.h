// Reads frames of a clip through its asynchronous importer.
#pragma once

#include "hostkit/sessions/AsyncSession.h"
#include "importhost/clips/AsyncPlan.h"
#include "importhost/clips/VideoClip.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace importhost {

class AsyncFrames {
public:
    // `failure` is empty for a delivered frame, otherwise the plug-in's result as text.
    using Deliver =
        std::function<void(std::int64_t index, const hostkit::HostFrame& frame, const std::string& failure)>;

    // Creates the asynchronous importer. Throws ClipFailure if the plug-in offers none for this clip.
    AsyncFrames(Editor& editor, VideoClip& clip, PrPixelFormat format);

    // Follows the plan and delivers frames in the order of `indexes`, whatever order they were collected in; frames
    // collected early are kept until then.
    void run(const std::vector<std::int64_t>& indexes, const std::vector<AsyncStep>& plan, const Deliver& deliver);

private:
    struct Arrived {
        hostkit::HostFrame frame;
        std::string failure;
    };

    void create();
    void refocus();
    Arrived collect(std::int64_t index);

    VideoClip& m_clip;
    PrPixelFormat m_format;
    hostkit::AsyncSession m_async;
    std::map<std::int64_t, std::string> m_refused;      // failed announcements, until the frame is collected
};

}  // namespace importhost
