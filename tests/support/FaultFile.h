// Wraps another file, adds faults that a test requests, and counts every call.
#pragma once

#include "fileio/File.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace fileio {

class FaultFile : public File {
public:
    /// Without faults the file behaves as `inner`, which must outlive this object.
    explicit FaultFile(File& inner) : m_inner(inner) {}

    // --- Faults ---

    /// Makes a read that touches the byte at this position fail completely.
    void breakByte(std::uint64_t position) { m_brokenBytes.push_back(position); }

    /// Limits every read to this many bytes.
    void limitReads(std::uint64_t bytes) { m_readLimit = bytes; }

    /// Makes seeks to this position fail.
    void refuseSeekTo(std::int64_t position) { m_refusedSeeks.push_back(position); }

    /// Makes the read with this number, counted from 0, throw std::bad_alloc.
    void throwAtRead(std::uint64_t number) { m_throwingRead = number; }

    // --- Counters ---

    struct Read {
        std::int64_t position;
        std::uint64_t wanted;
        std::uint64_t got;
    };

    const std::vector<Read>& reads() const { return m_reads; }
    std::uint64_t bytesRead() const;
    std::uint64_t seekCount() const { return m_seekCount; }

    bool open(const char* pathUtf8, std::uint32_t mode) override { return m_inner.open(pathUtf8, mode); }
    void close() override { m_inner.close(); }
    std::int64_t size() override { return m_inner.size(); }
    std::int64_t tell() override { return m_inner.tell(); }
    bool seek(std::int64_t pos) override;
    std::uint64_t read(void* buffer, std::uint64_t count) override;
    std::uint64_t write(const void* buffer, std::uint64_t count) override { return m_inner.write(buffer, count); }

private:
    bool touchesBrokenByte(std::uint64_t position, std::uint64_t count) const;

    File& m_inner;
    std::vector<std::uint64_t> m_brokenBytes;
    std::vector<std::int64_t> m_refusedSeeks;
    std::uint64_t m_readLimit = UINT64_MAX;
    std::optional<std::uint64_t> m_throwingRead;
    std::vector<Read> m_reads;
    std::uint64_t m_seekCount = 0;
};

}  // namespace fileio
