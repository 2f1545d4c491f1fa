#include "wrong/Fault.h"

namespace wrong {

std::span<const Fault> measureFaults() { return {}; }

}  // namespace wrong
