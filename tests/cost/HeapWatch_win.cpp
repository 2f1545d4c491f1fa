#include "HeapWatch.h"

// The mutex and the condition of each future are made at their first use.
const std::size_t HeapWatch::kMostForAWait = 2;
