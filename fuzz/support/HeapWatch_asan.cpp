// Counts with the address sanitizer's hooks.
#include "support/HeapWatch.h"

#include <atomic>

// Declared here because not every compiler with the sanitizer has the header.
extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*onMalloc)(const volatile void*, std::size_t),
                                              void (*onFree)(const volatile void*));
std::size_t __sanitizer_get_allocated_size(const volatile void* block);
}

namespace fuzz {

namespace {

std::atomic<std::ptrdiff_t> inUse = 0;
std::atomic<std::ptrdiff_t> highest = 0;
std::ptrdiff_t atStart = 0;

void onMalloc(const volatile void*, std::size_t size) {
    const std::ptrdiff_t now = inUse += static_cast<std::ptrdiff_t>(size);
    if (now > highest) {
        highest = now;   // a race between two threads may lose a few bytes
    }
}

void onFree(const volatile void* block) {
    if (block != nullptr) {
        inUse -= static_cast<std::ptrdiff_t>(__sanitizer_get_allocated_size(block));
    }
}

}  // namespace

void HeapWatch::start() {
    static const bool installed = __sanitizer_install_malloc_and_free_hooks(onMalloc, onFree) != 0;
    static_cast<void>(installed);
    atStart = inUse;
    highest = atStart;
}

std::size_t HeapWatch::peak() {
    return static_cast<std::size_t>(highest - atStart);
}

}  // namespace fuzz
