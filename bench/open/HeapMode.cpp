#include "open/HeapMode.h"

#include <climits>

#include <malloc.h>

void bench::setUpHeap(HeapMode mode) {
    constexpr int kUsualThreshold = 128 * 1024;
    const bool fresh = mode == HeapMode::fresh;
    mallopt(M_MMAP_THRESHOLD, kUsualThreshold);
    mallopt(M_MMAP_MAX, fresh ? 65'536 : 0);
    mallopt(M_TRIM_THRESHOLD, fresh ? kUsualThreshold : INT_MAX);
    if (fresh) {
        malloc_trim(0);
    }
}
