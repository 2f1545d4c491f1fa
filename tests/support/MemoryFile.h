// Files in memory that open, share, read and write as system files do.
#pragma once

#include "fileio/File.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace fileio {

/// A folder of named files, shared by the MemoryFile objects that use it. Not thread-safe.
class MemoryDisk {
public:
    struct Entry {
        std::vector<std::uint8_t> bytes;
        int sharingReaders = 0;
        bool isHeldAlone = false;
    };

    /// The entry at a path, or null.
    std::shared_ptr<Entry> find(const std::string& path) const;

    /// The entry at a path; adds an empty one if there is none.
    std::shared_ptr<Entry> findOrAdd(const std::string& path);

private:
    std::map<std::string, std::shared_ptr<Entry>> m_entries;
};

class MemoryFile : public File {
public:
    /// A closed file that opens files of `disk`, which must outlive this object.
    explicit MemoryFile(MemoryDisk& disk) : m_disk(&disk) {}

    /// A file that holds `bytes`, open for reading.
    explicit MemoryFile(std::vector<std::uint8_t> bytes);

    ~MemoryFile() override;
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    bool open(const char* pathUtf8, std::uint32_t mode) override;
    void close() override;
    std::int64_t size() override;
    std::int64_t tell() override;
    bool seek(std::int64_t pos) override;
    std::uint64_t read(void* buffer, std::uint64_t count) override;
    std::uint64_t write(const void* buffer, std::uint64_t count) override;

private:
    MemoryDisk* m_disk = nullptr;
    std::shared_ptr<MemoryDisk::Entry> m_entry;
    std::uint32_t m_mode = 0;
    std::uint64_t m_position = 0;
};

}  // namespace fileio
