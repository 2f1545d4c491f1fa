// How often the plug-in takes memory, whoever of its libraries asks for it.
#pragma once

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/watch/ImportHook.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

class HeapWatch {
public:
    // Watches from now on. The library stays loaded for longer, and none of its calls runs while this object is made or
    // ends. One at a time.
    explicit HeapWatch(const hostkit::PluginLibrary& library);

    // Since the last clear().
    static std::size_t allocations() { return s_allocations; }
    static std::size_t allocationsOfThisThread() { return t_allocations; }
    static std::size_t largest() { return s_largest; }
    static void clear();

    // What the C++ runtime takes on this system when a thread waits for a future: no program can have it otherwise.
    static const std::size_t kMostForAWait;

    // For what takes the place of the system's functions.
    static void add(std::size_t bytes);

private:
    static std::atomic<std::size_t> s_allocations;
    static std::atomic<std::size_t> s_largest;
    static thread_local std::size_t t_allocations;

    std::vector<std::unique_ptr<hostkit::ImportHook>> m_hooks;
};
