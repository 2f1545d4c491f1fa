#include "damage/catalogue/Catalogue.h"

#include <stdexcept>

namespace damage {

std::vector<DamagedFile> damagedFiles() {
    std::vector<DamagedFile> all;
    for (const auto& group : {brokenCaptures(), brokenIndexes(), brokenOpenDml(), brokenHeaders(), extremeSizes(),
                              brokenStreams(), brokenSounds()}) {
        all.insert(all.end(), group.begin(), group.end());
    }
    return all;
}

DamagedFile damagedFile(std::string_view name) {
    for (const DamagedFile& file : damagedFiles()) {
        if (file.name == name) {
            return file;
        }
    }
    throw std::out_of_range("no damaged file of that name: " + std::string(name));
}

Bytes honestClip() { return clipWith(headers({videoList(), soundList()})); }

}  // namespace damage
