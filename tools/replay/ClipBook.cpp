#include "replay/ClipBook.h"

namespace replay {

ClipBook::Found ClipBook::find(const std::string& loggedPath, csSDK_int32 fileStream, bool quietFirst) const {
    Found found;
    for (auto at = m_clips.rbegin(); at != m_clips.rend(); ++at) {
        const ClipPtr& clip = *at;
        if (clip->loggedPath != loggedPath || clip->fileStream != fileStream) {
            continue;
        }
        ++found.candidates;
        if (!found.clip || (found.clip->isQuiet != quietFirst && clip->isQuiet == quietFirst)) {
            found.clip = clip;
        }
    }
    return found;
}

void ClipBook::clear() {
    for (const ClipPtr& clip : m_clips) {
        clip->session.close();
    }
    m_clips.clear();
}

}  // namespace replay
