// Another file seen through faults, with every call counted.
#pragma once

#include "fileio/File.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace fileio {

// How a file fails. The defaults make no faults.
struct FileFaults {
    static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

    std::uint64_t largestRead = kNever;       // a longer read returns this many bytes
    std::uint64_t brokenFrom = kNever;        // a read that touches one of these bytes fails as a whole
    std::uint64_t brokenCount = 0;
    std::uint64_t refusedFrom = kNever;       // a seek to one of these positions fails
    std::uint64_t refusedCount = 0;
    std::int64_t claimedGrowth = 0;           // added to the true size when it is asked for
    std::uint64_t readsUntilCut = kNever;     // after so many reads the file ends at the byte below
    std::uint64_t cutAt = 0;

    bool none() const { return *this == FileFaults{}; }
    friend bool operator==(const FileFaults&, const FileFaults&) = default;
};

class FaultFile : public File {
public:
    // `inner`, and `faults` if given, must outlive this object; `faults` may change while it lives.
    explicit FaultFile(File& inner) : m_inner(inner), m_faults(m_own) {}
    FaultFile(File& inner, const FileFaults& faults) : m_inner(inner), m_faults(faults) {}

    // --- Faults of this file alone ---

    void breakByte(std::uint64_t position);
    void limitReads(std::uint64_t bytes) { m_own.largestRead = bytes; }
    void refuseSeekTo(std::uint64_t position);

    // The read with this number, counted from 0, throws std::bad_alloc.
    void throwAtRead(std::uint64_t number) { m_throwingRead = number; }

    // The file ends at `end`, ...
    void cutAt(std::uint64_t end);
    // ... or reads do, while the size stays.
    void endReadsAt(std::uint64_t end) { m_endOfReads = end; }

    // --- Counters ---

    struct Read {
        std::int64_t position;
        std::uint64_t wanted;
        std::uint64_t got;
    };

    // Only with faults of its own: a fuzzer's file is read millions of times.
    const std::vector<Read>& reads() const { return m_reads; }
    std::uint64_t bytesRead() const;
    std::uint64_t seekCount() const { return m_seekCount; }

    bool open(const char* pathUtf8, std::uint32_t mode) override { return m_inner.open(pathUtf8, mode); }
    void close() override { m_inner.close(); }
    std::int64_t size() override;
    std::int64_t tell() override { return m_inner.tell(); }
    bool seek(std::int64_t pos) override;
    std::uint64_t read(void* buffer, std::uint64_t count) override;
    std::uint64_t write(const void* buffer, std::uint64_t count) override { return m_inner.write(buffer, count); }

private:
    std::uint64_t cut() const;

    File& m_inner;
    FileFaults m_own;
    const FileFaults& m_faults;
    std::uint64_t m_endOfReads = FileFaults::kNever;
    std::optional<std::uint64_t> m_throwingRead;
    std::vector<Read> m_reads;
    std::uint64_t m_readCount = 0;
    std::uint64_t m_seekCount = 0;
};

}  // namespace fileio
