// A file on a Win32 handle.
#pragma once

#include "fileio/File.h"

namespace fileio {

class WinFile : public File {
public:
    WinFile();
    ~WinFile() override;
    WinFile(const WinFile&) = delete;
    WinFile& operator=(const WinFile&) = delete;

    bool open(const char* pathUtf8, std::uint32_t mode) override;

    // Opens a zero-terminated UTF-16 path, which is passed to the system unchanged.
    bool open(const char16_t* path, std::uint32_t mode);

    void close() override;
    std::int64_t size() override;
    std::int64_t tell() override;
    bool seek(std::int64_t pos) override;
    std::uint64_t read(void* buffer, std::uint64_t count) override;
    std::uint64_t write(const void* buffer, std::uint64_t count) override;

    // The Win32 handle, all bits set while closed. This object keeps ownership.
    void* nativeHandle() const { return m_handle; }

private:
    void* m_handle;
    bool m_isOpen;
};

}  // namespace fileio
