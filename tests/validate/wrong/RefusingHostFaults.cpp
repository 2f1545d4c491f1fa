#include "wrong/Fault.h"

namespace wrong {

std::span<const Fault> refusingHostFaults() { return {}; }

}  // namespace wrong
