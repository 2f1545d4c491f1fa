// The counterpart of WinFile on POSIX descriptors: same modes, same results, so that everything above also runs
// natively.
//
// What POSIX cannot do: sharing is advisory (it binds PosixFile objects of all processes, not other programs), an open
// file can be deleted or renamed, and kOpenUnbuffered has no portable counterpart and is ignored.
#pragma once

#include "fileio/File.h"

namespace fileio {

class PosixFile : public File {
public:
    PosixFile() = default;
    ~PosixFile() override;
    PosixFile(const PosixFile&) = delete;
    PosixFile& operator=(const PosixFile&) = delete;

    bool open(const char* pathUtf8, std::uint32_t mode) override;

    // Opens a zero-terminated UTF-16 path.
    bool open(const char16_t* path, std::uint32_t mode);

    void close() override;
    std::int64_t size() override;
    std::int64_t tell() override;
    bool seek(std::int64_t pos) override;
    std::uint64_t read(void* buffer, std::uint64_t count) override;
    std::uint64_t write(const void* buffer, std::uint64_t count) override;

    // The descriptor as a pointer's value, all bits set while closed. This object keeps ownership.
    void* nativeHandle() const;

private:
    int m_descriptor = -1;
};

}  // namespace fileio
