// Files in memory that open, share, read and write as a system's files do. Where nothing was written they are zero and
// cost nothing, so that a test may have gigabytes.
#pragma once

#include "fileio/File.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace fileio {

// A file's bytes: zeros but for the pieces that were put there.
class FileBytes {
public:
    std::uint64_t size() const { return m_size; }

    // Cuts the file, or adds zeros.
    void resize(std::uint64_t size);

    // Writes at a position; the file grows if need be.
    void put(std::uint64_t position, const std::vector<std::uint8_t>& bytes);

    // Returns how many of `count` bytes the file has from `position` on, and copies them to `out`.
    std::size_t read(std::uint64_t position, std::size_t count, std::uint8_t* out) const;

private:
    std::uint64_t m_size = 0;
    std::map<std::uint64_t, std::vector<std::uint8_t>> m_pieces;   // by position; none touches another
};

// A folder of named files, shared by the MemoryFile objects that are open on it. Not for several threads.
class MemoryDisk {
public:
    struct Entry {
        FileBytes bytes;
        int sharingReaders = 0;
        bool isHeldAlone = false;
    };

    // The entry at a path, or null.
    std::shared_ptr<Entry> find(const std::string& path) const;

    // The entry at a path, made empty if there is none.
    std::shared_ptr<Entry> findOrAdd(const std::string& path);

    // Those who have the file open keep it.
    void remove(const std::string& path) { m_entries.erase(path); }

private:
    std::map<std::string, std::shared_ptr<Entry>> m_entries;
};

class MemoryFile : public File {
public:
    // Closed; opens files of `disk`, which must outlive this object.
    explicit MemoryFile(MemoryDisk& disk) : m_disk(&disk) {}

    // Open for reading on a file of its own: of `bytes`, or of `size` zeros.
    explicit MemoryFile(const std::vector<std::uint8_t>& bytes);
    explicit MemoryFile(std::int64_t size);

    ~MemoryFile() override;
    MemoryFile(MemoryFile&&) = default;
    MemoryFile& operator=(MemoryFile&&) = delete;

    // Changes the open file's bytes, whatever it is open for.
    void put(std::uint64_t position, const std::vector<std::uint8_t>& bytes);

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
