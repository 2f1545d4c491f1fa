// A file in memory that returns less than it could: nothing after some byte, as on a share that lost the rest, or few
// bytes per read.
#pragma once

#include "aviwriter/Blocks.h"
#include "fileio/File.h"

#include <cstdint>

namespace damage {

class ShortFile : public fileio::File {
public:
    // `bytes`, which must outlive this object, followed by zeros. Initially reads return everything.
    explicit ShortFile(const aviwriter::Bytes& bytes, std::uint64_t zerosAfter = 0);

    // Truncates the file.
    void cutAt(std::uint64_t end) { m_size = m_end = end; }

    // Makes reads stop at `end`, without changing the size.
    void endAt(std::uint64_t end) { m_end = end; }
    void endAsItSays() { m_end = m_size; }

    // Limits every read to `bytes`.
    void limitReads(std::uint64_t bytes) { m_mostOfARead = bytes; }

    bool open(const char*, std::uint32_t) override { return false; }
    void close() override {}
    std::int64_t size() override { return static_cast<std::int64_t>(m_size); }
    std::int64_t tell() override { return m_position; }
    bool seek(std::int64_t pos) override;
    std::uint64_t read(void* buffer, std::uint64_t count) override;
    std::uint64_t write(const void*, std::uint64_t) override { return 0; }

private:
    const aviwriter::Bytes& m_bytes;
    std::uint64_t m_size;
    std::uint64_t m_end;
    std::uint64_t m_mostOfARead = UINT64_MAX;
    std::int64_t m_position = 0;
};

}  // namespace damage
