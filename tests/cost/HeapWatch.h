// Counts the allocations of the plug-in and of its libraries.
#pragma once

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/watch/ImportHook.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

class HeapWatch {
public:
    // Starts counting. The library must outlive this object, and none of its calls may run while this object is
    // constructed or destroyed. There can be only one at a time.
    explicit HeapWatch(const hostkit::PluginLibrary& library);

    // Since the last clear().
    static std::size_t allocations() { return s_allocations; }
    static std::size_t allocationsOfThisThread() { return t_allocations; }
    static std::size_t largest() { return s_largest; }
    static void clear();

    // Allocations of the C++ runtime on this system when a thread waits for a future; no program can avoid them.
    static const std::size_t kMostForAWait;

    // Called by the replacements of the system's functions.
    static void add(std::size_t bytes);

private:
    static std::atomic<std::size_t> s_allocations;
    static std::atomic<std::size_t> s_largest;
    static thread_local std::size_t t_allocations;

    std::vector<std::unique_ptr<hostkit::ImportHook>> m_hooks;
};
