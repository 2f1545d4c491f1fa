#include "HeapWatch.h"

// The mutex and the condition variable of each future are created when first used.
const std::size_t HeapWatch::kMostForAWait = 2;
