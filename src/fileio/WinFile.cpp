#include "fileio/WinFile.h"

#include "text/Utf.h"

#include <windows.h>

namespace fileio {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

namespace {

// The mode bits as arguments of CreateFileW.
struct OpenArguments {
    DWORD access = 0;
    DWORD share = 0;
    DWORD disposition = 0;  // an invalid value: the system rejects a mode that neither reads nor writes
    DWORD flags = FILE_ATTRIBUTE_NORMAL;
};

OpenArguments openArguments(std::uint32_t mode) {
    OpenArguments arguments;
    if (mode & kOpenRead) {
        arguments.access |= GENERIC_READ;
        arguments.disposition = OPEN_EXISTING;
    }
    if (mode & kOpenWrite) {
        arguments.access |= GENERIC_WRITE;
        arguments.disposition = CREATE_ALWAYS;
    }
    if (mode & kOpenUnbuffered) {
        arguments.flags |= FILE_FLAG_NO_BUFFERING;
    }
    if (mode & kOpenShareRead) {
        arguments.share = FILE_SHARE_READ;
    }
    return arguments;
}

}  // namespace

WinFile::WinFile() : m_handle(INVALID_HANDLE_VALUE), m_isOpen(false) {}

WinFile::~WinFile() {
    if (m_isOpen && m_handle != INVALID_HANDLE_VALUE) {
        CloseHandle(m_handle);
    }
    m_handle = INVALID_HANDLE_VALUE;
    m_isOpen = false;
}

bool WinFile::open(const char* pathUtf8, std::uint32_t mode) {
    return open(utf16FromUtf8(pathUtf8).c_str(), mode);
}

bool WinFile::open(const char16_t* path, std::uint32_t mode) {
    if (m_isOpen) {
        close();
    }
    const OpenArguments arguments = openArguments(mode);
    m_handle = CreateFileW(reinterpret_cast<const wchar_t*>(path), arguments.access, arguments.share, nullptr,
                           arguments.disposition, arguments.flags, nullptr);
    if (m_handle == INVALID_HANDLE_VALUE) {
        return false;
    }
    m_isOpen = true;
    return true;
}

void WinFile::close() {
    if (m_handle != INVALID_HANDLE_VALUE) {
        CloseHandle(m_handle);
    }
    m_isOpen = false;
    m_handle = INVALID_HANDLE_VALUE;
}

std::int64_t WinFile::size() {
    LARGE_INTEGER result{};
    GetFileSizeEx(m_handle, &result);
    return result.QuadPart;
}

std::int64_t WinFile::tell() {
    LARGE_INTEGER position{};
    SetFilePointerEx(m_handle, LARGE_INTEGER{}, &position, FILE_CURRENT);
    return position.QuadPart;
}

bool WinFile::seek(std::int64_t pos) {
    LARGE_INTEGER position{};
    position.QuadPart = pos;
    return SetFilePointerEx(m_handle, position, nullptr, FILE_BEGIN) != 0;
}

std::uint64_t WinFile::read(void* buffer, std::uint64_t count) {
    DWORD done = 0;
    ReadFile(m_handle, buffer, static_cast<DWORD>(count), &done, nullptr);
    return done;
}

std::uint64_t WinFile::write(const void* buffer, std::uint64_t count) {
    DWORD done = 0;
    WriteFile(m_handle, buffer, static_cast<DWORD>(count), &done, nullptr);
    return done;
}

}  // namespace fileio
