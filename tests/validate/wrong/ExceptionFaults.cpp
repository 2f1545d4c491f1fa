#include "wrong/Fault.h"

namespace wrong {

std::span<const Fault> exceptionFaults() { return {}; }

}  // namespace wrong
