// The clips that are open in a replay. The log identifies them only by path and stream.
#pragma once

#include "hostkit/sessions/ClipSession.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace replay {

struct ReplayClip {
    ReplayClip(hostkit::ImporterSession& importer, const std::filesystem::path& file, std::string path,
               csSDK_int32 stream)
        : loggedPath(std::move(path)), fileStream(stream), session(importer, file, {.streamIndex = stream}) {}

    const std::string loggedPath;
    const csSDK_int32 fileStream;
    hostkit::ClipSession session;
    bool isQuiet = false;
    csSDK_int32 channels = 1;                   // of the sound described last
    std::vector<std::string> offered;           // names of pixel formats, as in the log
};

using ClipPtr = std::shared_ptr<ReplayClip>;

class ClipBook {
public:
    struct Found {
        ClipPtr clip;                           // null if not found
        std::size_t candidates = 0;
    };

    // If there are several, the one opened last; quiet clips come first or last, depending on `quietFirst`.
    Found find(const std::string& loggedPath, csSDK_int32 fileStream, bool quietFirst) const;

    void add(const ClipPtr& clip) { m_clips.push_back(clip); }
    void remove(const ClipPtr& clip) { std::erase(m_clips, clip); }
    std::size_t size() const { return m_clips.size(); }

    // Closes all open clips.
    void clear();

private:
    std::vector<ClipPtr> m_clips;               // in the order of opening
};

}  // namespace replay
