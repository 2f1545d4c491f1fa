// Files in memory that fail as disks and network shares do. They replace the system's files when a program is linked,
// so that everything above the file class runs unchanged.
#pragma once

#include "support/Input.h"

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace fuzz {

// How the files behave. The defaults cause no faults.
struct DiskFaults {
    static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

    std::uint64_t largestRead = kNever;       // a longer read returns this many bytes
    std::uint64_t brokenFrom = kNever;        // a read that touches one of these bytes returns none
    std::uint64_t brokenCount = 0;
    std::uint64_t refusedFrom = kNever;       // a seek to one of these positions fails
    std::uint64_t refusedCount = 0;
    std::int64_t claimedGrowth = 0;           // added to the reported size
    std::uint64_t readsUntilCut = kNever;     // after this many reads, files end at cutAt
    std::uint64_t cutAt = 0;

    bool none() const { return *this == DiskFaults{}; }
    friend bool operator==(const DiskFaults&, const DiskFaults&) = default;
};

// The faults that a script asks for, in a file of `fileSize` bytes.
DiskFaults readFaults(Script& script, std::uint64_t fileSize);

// All members are thread-safe.
class FaultyDisk {
public:
    static FaultyDisk& instance();

    // Adds a file or replaces the one with this name, even while it is open.
    void put(const std::string& name, ByteView bytes);
    void cut(const std::string& name, std::uint64_t size);
    void remove(const std::string& name);

    void setFaults(const DiskFaults& faults);
    std::size_t openFiles() const;

    // --- The calls that replace the system's; a handle is never negative and names one open file ---

    // Returns -1 if there is no such file, or if `mode` (bits of fileio::OpenMode) allows nothing.
    int open(const std::string& name, std::uint32_t mode);
    void close(int handle);
    std::int64_t size(int handle) const;
    std::int64_t tell(int handle) const;
    bool seek(int handle, std::int64_t position);
    std::uint64_t read(int handle, void* buffer, std::uint64_t count);

private:
    struct Entry {
        Bytes bytes;
        std::uint64_t reads = 0;
    };
    struct OpenFile {
        std::shared_ptr<Entry> entry;
        std::uint64_t position = 0;
        bool readable = false;
    };

    mutable std::mutex m_mutex;
    DiskFaults m_faults;
    std::map<std::string, std::shared_ptr<Entry>> m_entries;
    std::map<int, OpenFile> m_open;
    int m_nextHandle = 0;
};

}  // namespace fuzz
