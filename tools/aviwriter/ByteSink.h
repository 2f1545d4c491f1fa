// Where a file is written: memory or disk. Writes may go back (headers are completed last) and forward (the gap reads
// as zeros, and takes no disk space if the file system supports sparse files).
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

    // Writes all of `data` at a byte position of the file; throws std::runtime_error on failure.
    virtual void write(std::uint64_t position, const Bytes& data) = 0;
};

class MemorySink final : public ByteSink {
public:
    void write(std::uint64_t position, const Bytes& data) override;

    // The bytes written so far; owned by the sink.
    const Bytes& bytes() const { return m_bytes; }

private:
    Bytes m_bytes;
};

class FileSink final : public ByteSink {
public:
    // Creates or empties the file; throws std::runtime_error on failure.
    explicit FileSink(const std::filesystem::path& path);

    void write(std::uint64_t position, const Bytes& data) override;

    // Writes the buffered bytes; throws std::runtime_error on failure.
    void close();

private:
    std::ofstream m_file;
    std::uint64_t m_position = 0;
};

}  // namespace aviwriter
