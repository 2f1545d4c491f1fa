// Files in memory that fail as disks and network shares do. They replace the system's files when a program is linked,
// so that everything above the file class runs unchanged.
#pragma once

#include "support/FaultFile.h"
#include "support/Input.h"
#include "support/MemoryFile.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace fuzz {

// The faults that a script asks for, in a file of `fileSize` bytes.
fileio::FileFaults readFaults(Script& script, std::uint64_t fileSize);

// All members are thread-safe.
class FaultyDisk {
public:
    static FaultyDisk& instance();
    FaultyDisk();
    ~FaultyDisk();

    // Adds a file or replaces the one with this name, even while it is open.
    void put(const std::string& name, ByteView bytes);
    void cut(const std::string& name, std::uint64_t size);
    void remove(const std::string& name);

    void setFaults(const fileio::FileFaults& faults);
    std::size_t openFiles() const;

    // --- The calls that replace the system's; a handle is never negative and names one open file ---

    // Returns -1 if there is no such file, or if `mode` (bits of fileio::OpenMode) allows nothing.
    int open(const std::string& name, std::uint32_t mode);
    void close(int handle);
    std::int64_t size(int handle);
    std::int64_t tell(int handle);
    bool seek(int handle, std::int64_t position);
    std::uint64_t read(int handle, void* buffer, std::uint64_t count);

private:
    struct OpenFile;

    fileio::File* find(int handle);

    mutable std::mutex m_mutex;
    fileio::FileFaults m_faults;
    fileio::MemoryDisk m_disk;
    std::map<int, std::unique_ptr<OpenFile>> m_open;
    int m_nextHandle = 0;
};

}  // namespace fuzz
