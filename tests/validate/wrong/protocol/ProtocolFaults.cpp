#include "wrong/protocol/ProtocolFaults.h"

#include <vector>

namespace wrong {

std::span<const Fault> protocolFaults() {
    static const std::vector<Fault> all = [] {
        std::vector<Fault> faults;
        for (const auto part : {startFaults(), openFaults(), infoFaults(), listFaults(), lifeFaults()}) {
            faults.insert(faults.end(), part.begin(), part.end());
        }
        return faults;
    }();
    return all;
}

}  // namespace wrong
