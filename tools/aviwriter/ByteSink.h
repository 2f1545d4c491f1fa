// Where a written file goes: to memory or to disk. Writing may jump back (headers are completed last) and
// forward (the gap reads as zeros, and takes no room on disk where the file system knows sparse files).
#pragma once

#include "aviwriter/Blocks.h"

#include <cstdint>
#include <filesystem>
#include <fstream>

namespace aviwriter {

class ByteSink {
public:
    ByteSink() = default;
    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;
    virtual ~ByteSink() = default;

    // Writes all of `data` at a byte position of the file; throws std::runtime_error when that fails.
    virtual void write(std::uint64_t position, const Bytes& data) = 0;
};

class MemorySink final : public ByteSink {
public:
    void write(std::uint64_t position, const Bytes& data) override;

    // What has been written so far; owned by the sink.
    const Bytes& bytes() const { return m_bytes; }

private:
    Bytes m_bytes;
};

class FileSink final : public ByteSink {
public:
    // Creates the file or empties it; throws std::runtime_error when it cannot.
    explicit FileSink(const std::filesystem::path& path);

    void write(std::uint64_t position, const Bytes& data) override;

    // Writes out what is still buffered; throws std::runtime_error when the disk refuses it.
    void close();

private:
    std::ofstream m_file;
    std::uint64_t m_position = 0;
};

}  // namespace aviwriter
