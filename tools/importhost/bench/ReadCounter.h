// The plug-in's own reads from files, while something is measured.
#pragma once

#include "hostkit/watch/DiskFaults.h"

#include <cstdint>

namespace importhost::bench {

struct Reads {
    bool areSeen = false;           // not of a plug-in that reads through another library
    int calls = 0;
    std::uint64_t bytes = 0;
};

// Counting costs a lock for each call of the system. One counter exists at a time.
class ReadCounter {
public:
    // No call of the plug-in runs while a counter is made or ends; it ends before the library is unloaded.
    explicit ReadCounter(const hostkit::PluginLibrary& library) : m_disk(library) {}

    void start() { m_disk.clear(); }

    // Since the latest start().
    Reads reads() const {
        return {m_disk.covers(hostkit::DiskCall::Read), m_disk.calls(hostkit::DiskCall::Read), m_disk.bytesRead()};
    }

private:
    hostkit::DiskFaults m_disk;
};

}  // namespace importhost::bench
