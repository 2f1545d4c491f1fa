#include "damage/Catalogue.h"

namespace damage {

std::vector<DamagedFile> damagedFiles() {
    std::vector<DamagedFile> all;
    for (const auto& group : {brokenCaptures(), brokenIndexes(), brokenHeaders(), brokenStreams()}) {
        all.insert(all.end(), group.begin(), group.end());
    }
    return all;
}

Bytes honestClip() { return clipWith(headers({videoList(), soundList()})); }

}  // namespace damage
