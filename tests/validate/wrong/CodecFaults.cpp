#include "wrong/Fault.h"

namespace wrong {

std::span<const Fault> codecFaults() { return {}; }

}  // namespace wrong
