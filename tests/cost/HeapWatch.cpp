#include "HeapWatch.h"

#include <cstdlib>

// Replaces the allocation functions that the plug-in's library imports by name. On Windows those are all, because the
// C++ runtime is part of the plug-in. Natively the C++ runtime is a separate library; see HeapWatch_posix.cpp.
std::atomic<std::size_t> HeapWatch::s_allocations = 0;
std::atomic<std::size_t> HeapWatch::s_largest = 0;
thread_local std::size_t HeapWatch::t_allocations = 0;

namespace {

// The test program's own functions can serve the plug-in, because both use the same C library.
void* watchedMalloc(std::size_t bytes) {
    HeapWatch::add(bytes);
    return std::malloc(bytes);
}

void* watchedCalloc(std::size_t count, std::size_t bytes) {
    HeapWatch::add(count * bytes);
    return std::calloc(count, bytes);
}

void* watchedRealloc(void* block, std::size_t bytes) {
    HeapWatch::add(bytes);
    return std::realloc(block, bytes);
}

}  // namespace

HeapWatch::HeapWatch(const hostkit::PluginLibrary& library) {
    const auto hook = [&](const char* name, void* replacement) {
        m_hooks.push_back(std::make_unique<hostkit::ImportHook>(library.handle(), name, replacement));
    };
    hook("malloc", reinterpret_cast<void*>(&watchedMalloc));
    hook("calloc", reinterpret_cast<void*>(&watchedCalloc));
    hook("realloc", reinterpret_cast<void*>(&watchedRealloc));
    clear();
}

void HeapWatch::clear() {
    s_allocations = 0;
    t_allocations = 0;
    s_largest = 0;
}

void HeapWatch::add(std::size_t bytes) {
    ++s_allocations;
    ++t_allocations;
    std::size_t before = s_largest;
    while (bytes > before && !s_largest.compare_exchange_weak(before, bytes)) {
    }
}
