#include "damage/long/HeldMemory.h"

#include "hostkit/system/ProcessSize.h"

namespace damage {

// The heap gets its pages from the system in large units.
const std::uint64_t kHeldMemoryVariation = std::uint64_t{512} << 10;

std::uint64_t heldMemory() { return hostkit::processSize().bytes; }

}  // namespace damage
