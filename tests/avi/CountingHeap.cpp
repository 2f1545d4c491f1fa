#include "CountingHeap.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

// Each block is preceded by its size, in as many bytes as keep the block aligned.
constexpr std::size_t kFront = 16;
static_assert(kFront >= alignof(std::max_align_t) && kFront >= sizeof(std::size_t));

std::atomic<std::size_t> s_inUse{0};
std::atomic<std::size_t> s_peak{0};
std::atomic<std::size_t> s_allocations{0};
std::atomic<std::size_t> s_failFrom{SIZE_MAX};
std::atomic<void (*)()> s_visitor{nullptr};

void* allocate(std::size_t size) {
    if (auto* visitor = s_visitor.exchange(nullptr)) {
        visitor();
    }
    const std::size_t number = s_allocations++;
    if (number >= s_failFrom) {
        return nullptr;
    }
    auto* front = static_cast<std::size_t*>(std::malloc(size + kFront));
    if (!front) {
        return nullptr;
    }
    *front = size;
    const std::size_t inUse = s_inUse += size;
    if (inUse > s_peak) {
        s_peak = inUse;
    }
    return reinterpret_cast<char*>(front) + kFront;
}

void* allocateOrThrow(std::size_t size) {
    if (void* block = allocate(size)) {
        return block;
    }
    throw std::bad_alloc();
}

void release(void* block) {
    if (block) {
        auto* front = reinterpret_cast<std::size_t*>(static_cast<char*>(block) - kFront);
        s_inUse -= *front;
        std::free(front);
    }
}

}  // namespace

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }

namespace heap {

std::size_t inUse() {
    return s_inUse;
}

void startCounting() {
    s_peak = s_inUse.load();
    s_allocations = 0;
}

std::size_t peak() {
    return s_peak;
}

std::size_t allocations() {
    return s_allocations;
}

void failFrom(std::size_t number) {
    s_failFrom = number;
}

void failNever() {
    s_failFrom = SIZE_MAX;
}

void visitNext(void (*visitor)()) {
    s_visitor = visitor;
}

}  // namespace heap
