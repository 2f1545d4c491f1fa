// The one way to file bytes: parser and readers see this interface and never the operating system.
#pragma once

#include <cstdint>

namespace fileio {

/// Bits of the mode that open() takes.
enum OpenMode : std::uint32_t {
    kOpenRead = 1,        ///< read an existing file
    kOpenWrite = 2,       ///< write; the file is created, or emptied if it exists, whether or not it is also read
    kOpenUnbuffered = 4,  ///< keep the system's cache out of the way
    kOpenShareRead = 8,   ///< let others read meanwhile; without it the file is ours alone
};

/// A file with one current position. A failure shows in the result; only open() may throw, and only for want of memory
/// or for a path beyond all bounds.
/// An object serves one thread at a time; different objects are independent of each other.
class File {
public:
    virtual ~File() = default;

    /// Opens the file at a zero-terminated UTF-8 path; `mode` holds OpenMode bits. A file that was open is closed
    /// first, also when the new open fails. A mode with neither kOpenRead nor kOpenWrite fails.
    virtual bool open(const char* pathUtf8, std::uint32_t mode) = 0;

    /// Closes the file; does nothing when it is closed.
    virtual void close() = 0;

    /// Size in bytes; 0 when it cannot be told. The position stays.
    virtual std::int64_t size() = 0;

    /// Current position in bytes from the start; 0 when it cannot be told.
    virtual std::int64_t tell() = 0;

    /// Moves to `pos` bytes from the start. Past the end is allowed; a negative position is refused.
    virtual bool seek(std::int64_t pos) = 0;

    /// Reads at the current position and moves it by the result: the bytes read, fewer than `count` at the end of
    /// the file, 0 on failure. Only the low 32 bits of `count` are used.
    virtual std::uint64_t read(void* buffer, std::uint64_t count) = 0;

    /// Writes at the current position and moves it by the result: the bytes written, 0 on failure. Only the low 32
    /// bits of `count` are used.
    virtual std::uint64_t write(const void* buffer, std::uint64_t count) = 0;

    /// Preferred transfer size in bytes.
    virtual std::uint64_t blockSize() { return 4096; }

    /// Preferred alignment of transfers in bytes.
    virtual std::uint64_t blockAlignment() { return 4096; }

protected:
    File() = default;
    File(const File&) = default;
    File& operator=(const File&) = default;
};

}  // namespace fileio
