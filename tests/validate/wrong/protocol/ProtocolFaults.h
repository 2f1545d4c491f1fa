// The faults of the protocol group, by what they have to do with.
#pragma once

#include "wrong/Fault.h"

namespace wrong {

std::span<const Fault> startFaults();       // before any file
std::span<const Fault> openFaults();        // opening and sharing files
std::span<const Fault> infoFaults();        // describing
std::span<const Fault> listFaults();        // lists and texts
std::span<const Fault> lifeFaults();        // quiet, close, several clips

}  // namespace wrong
