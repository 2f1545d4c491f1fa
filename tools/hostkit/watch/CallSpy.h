// The two calls in which a frame's time goes, as one plug-in makes them: the system's read and the codec's decode.
// Each is timed and seen and, on demand, left out, so that what remains is the plug-in's own.
//
// Only calls that the plug-in's own library makes are seen. They may come from any threads.
#pragma once

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/watch/ImportHook.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace hostkit {

// The calls of one function.
class SpiedCall {
public:
    // Since the last clear().
    std::uint64_t count() const { return m_count; }
    std::uint64_t nanoseconds() const { return m_nanoseconds; }
    std::uint64_t bytes() const { return m_bytes; }

    // What the latest call was given: where a read puts its bytes, or where a decode takes them.
    const void* lastBuffer() const { return m_lastBuffer; }
    std::uint64_t lastSize() const { return m_lastSize; }

    // From now on calls succeed and do nothing; buffers stay as they are.
    void leaveOut(bool isLeftOut) { m_isLeftOut = isLeftOut; }
    bool isLeftOut() const { return m_isLeftOut; }

    void clear();

    // For the functions that take the place of the true ones.
    void add(const void* buffer, std::uint64_t size, std::uint64_t nanoseconds);

private:
    std::atomic<std::uint64_t> m_count = 0;
    std::atomic<std::uint64_t> m_nanoseconds = 0;
    std::atomic<std::uint64_t> m_bytes = 0;
    std::atomic<const void*> m_lastBuffer = nullptr;
    std::atomic<std::uint64_t> m_lastSize = 0;
    std::atomic<bool> m_isLeftOut = false;
};

class CallSpy {
public:
    // The library stays loaded for longer, and none of its calls runs while this object is made or ends. One exists
    // at a time: throws std::logic_error. Throws std::runtime_error when the plug-in calls one of the two in a way
    // that cannot be seen.
    explicit CallSpy(const PluginLibrary& library);
    ~CallSpy();
    CallSpy(const CallSpy&) = delete;
    CallSpy& operator=(const CallSpy&) = delete;

    SpiedCall& reads() { return m_reads; }
    SpiedCall& decodes() { return m_decodes; }

    void clear();

private:
    SpiedCall m_reads;
    SpiedCall m_decodes;
    std::unique_ptr<ImportHook> m_readHook;
    std::unique_ptr<ImportHook> m_decodeHook;
};

// Inner seam of the systems' halves: the function by which files are read there, and what takes its place.
struct SpiedRead {
    const char* name = "";
    void* replacement = nullptr;
    void** original = nullptr;              // where the replacement looks for what it replaced
};
SpiedRead spiedRead();

// The one that exists. Only replacements ask, and they are called only while there is one.
CallSpy& currentCallSpy();

// Steady time, for what a call took.
std::uint64_t nanosecondsNow();

}  // namespace hostkit
