#include "support/HeapWatch.h"

namespace fuzz {

void HeapWatch::start() {}

std::size_t HeapWatch::peak() { return 0; }

}  // namespace fuzz
