// The only access to files: the parser and all readers use this interface, never the operating system.
#pragma once

#include <cstdint>

namespace fileio {

// Bits of the mode that open() takes.
enum OpenMode : std::uint32_t {
    kOpenRead = 1,        // open an existing file for reading
    kOpenWrite = 2,       // write; the file is created, or emptied if it exists, whether or not it is also read
    kOpenUnbuffered = 4,  // bypass the system's cache
    kOpenShareRead = 8,   // others may read at the same time; without it access is exclusive
};

// A file with one current position. Failures are reported in results; only open() may throw, and only if memory runs
// out or the path is too long. An object may be used by one thread at a time; different objects are independent.
class File {
public:
    virtual ~File() = default;

    // Opens the file at `pathUtf8`, zero-terminated UTF-8; `mode` holds OpenMode bits. An open file is closed first,
    // even if the new open fails. A mode with neither kOpenRead nor kOpenWrite fails.
    virtual bool open(const char* pathUtf8, std::uint32_t mode) = 0;

    // Closes the file; does nothing if it is closed.
    virtual void close() = 0;

    // Size in bytes, or 0 if unknown. Does not move the position.
    virtual std::int64_t size() = 0;

    // Current position in bytes from the start, or 0 if unknown.
    virtual std::int64_t tell() = 0;

    // Moves to `pos` bytes from the start. A position past the end is allowed, a negative one fails.
    virtual bool seek(std::int64_t pos) = 0;

    // Reads at the current position and advances it. Returns the number of bytes read: fewer than `count` at the end
    // of the file, 0 on failure. Only the low 32 bits of `count` are used.
    virtual std::uint64_t read(void* buffer, std::uint64_t count) = 0;

    // Writes at the current position and advances it. Returns the number of bytes written, 0 on failure. Only the low
    // 32 bits of `count` are used.
    virtual std::uint64_t write(const void* buffer, std::uint64_t count) = 0;

    // Preferred transfer size in bytes.
    virtual std::uint64_t blockSize() { return 4096; }

    // Preferred alignment of transfers in bytes.
    virtual std::uint64_t blockAlignment() { return 4096; }

protected:
    File() = default;
    File(const File&) = default;
    File& operator=(const File&) = default;
};

}  // namespace fileio
