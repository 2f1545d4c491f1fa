// A file of any size that is zero except for a few ranges, so that gigabytes cost a test nothing.
#pragma once

#include "fileio/File.h"

#include <cstdint>
#include <vector>

namespace fileio {

/// Always open for reading, without a path.
class SparseFile : public File {
public:
    explicit SparseFile(std::int64_t size) : m_size(size) {}

    /// Writes bytes at a position; they must lie within the size. Later ones replace earlier ones.
    void put(std::uint64_t position, std::vector<std::uint8_t> bytes);

    bool open(const char*, std::uint32_t) override { return false; }
    void close() override {}
    std::int64_t size() override { return m_size; }
    std::int64_t tell() override { return m_position; }
    bool seek(std::int64_t pos) override;
    std::uint64_t read(void* buffer, std::uint64_t count) override;
    std::uint64_t write(const void*, std::uint64_t) override { return 0; }

private:
    struct Extent {
        std::uint64_t position;
        std::vector<std::uint8_t> bytes;
    };

    std::int64_t m_size;
    std::int64_t m_position = 0;
    std::vector<Extent> m_extents;
};

}  // namespace fileio
