// Natively the C++ runtime is shared: the plug-in and the runtime's own functions use this program's operator new too.
#include "HeapWatch.h"

#include <cstdlib>
#include <new>

const std::size_t HeapWatch::kMostForAWait = 0;

namespace {

void* allocate(std::size_t size) {
    HeapWatch::add(size);
    return std::malloc(size != 0 ? size : 1);
}

void* allocateOrThrow(std::size_t size) {
    if (void* block = allocate(size)) {
        return block;
    }
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
