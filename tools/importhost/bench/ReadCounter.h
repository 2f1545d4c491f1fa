// Counts the plug-in's own reads from files during a measurement.
#pragma once

#include "hostkit/watch/DiskFaults.h"

#include <cstdint>

namespace importhost::bench {

struct Reads {
    bool areSeen = false;           // false for a plug-in that reads through another library
    int calls = 0;
    std::uint64_t bytes = 0;
};

// Counting costs a lock per system call. Only one counter may exist at a time.
class ReadCounter {
public:
    // No call of the plug-in may be running during construction and destruction; destroy it before the library is
    // unloaded.
    explicit ReadCounter(const hostkit::PluginLibrary& library) : m_disk(library) {}

    void start() { m_disk.clear(); }

    // Reads since the last start().
    Reads reads() const {
        return {m_disk.covers(hostkit::DiskCall::Read), m_disk.calls(hostkit::DiskCall::Read), m_disk.bytesRead()};
    }

private:
    hostkit::DiskFaults m_disk;
};

}  // namespace importhost::bench
