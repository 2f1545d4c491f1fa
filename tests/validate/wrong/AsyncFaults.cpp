#include "wrong/Fault.h"

namespace wrong {

std::span<const Fault> asyncFaults() { return {}; }

}  // namespace wrong
