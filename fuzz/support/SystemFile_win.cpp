// Replaces the system's file with one on the faulty disk when a program is linked.
#include "fileio/WinFile.h"

#include "support/FaultyDisk.h"
#include "text/Utf.h"

#include <cstdint>

namespace fileio {

namespace {

fuzz::FaultyDisk& disk() { return fuzz::FaultyDisk::instance(); }

void* pointerOf(int handle) { return reinterpret_cast<void*>(static_cast<std::intptr_t>(handle)); }

int numberOf(void* handle) { return static_cast<int>(reinterpret_cast<std::intptr_t>(handle)); }

}  // namespace

WinFile::WinFile() : m_handle(pointerOf(-1)), m_isOpen(false) {}

WinFile::~WinFile() {
    WinFile::close();
}

bool WinFile::open(const char* pathUtf8, std::uint32_t mode) {
    return open(utf16FromUtf8(pathUtf8).c_str(), mode);
}

bool WinFile::open(const char16_t* path, std::uint32_t mode) {
    if (m_isOpen) {
        close();
    }
    m_handle = pointerOf(disk().open(utf8FromUtf16(path), mode));
    m_isOpen = numberOf(m_handle) != -1;
    return m_isOpen;
}

void WinFile::close() {
    disk().close(numberOf(m_handle));
    m_handle = pointerOf(-1);
    m_isOpen = false;
}

std::int64_t WinFile::size() { return disk().size(numberOf(m_handle)); }
std::int64_t WinFile::tell() { return disk().tell(numberOf(m_handle)); }
bool WinFile::seek(std::int64_t pos) { return disk().seek(numberOf(m_handle), pos); }
std::uint64_t WinFile::read(void* buffer, std::uint64_t count) {
    return disk().read(numberOf(m_handle), buffer, count);
}
std::uint64_t WinFile::write(const void*, std::uint64_t) { return 0; }

}  // namespace fileio
