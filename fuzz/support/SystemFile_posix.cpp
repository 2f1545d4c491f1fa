// Replaces the system's file with one on the faulty disk when a program is linked.
#include "fileio/PosixFile.h"

#include "support/FaultyDisk.h"
#include "text/Utf.h"

#include <cstdint>

namespace fileio {

namespace {

fuzz::FaultyDisk& disk() { return fuzz::FaultyDisk::instance(); }

}  // namespace

PosixFile::~PosixFile() {
    PosixFile::close();
}

bool PosixFile::open(const char* pathUtf8, std::uint32_t mode) {
    if (m_descriptor != -1) {
        close();
    }
    m_descriptor = disk().open(pathUtf8, mode);
    return m_descriptor != -1;
}

bool PosixFile::open(const char16_t* path, std::uint32_t mode) {
    return open(utf8FromUtf16(path).c_str(), mode);
}

void PosixFile::close() {
    disk().close(m_descriptor);
    m_descriptor = -1;
}

std::int64_t PosixFile::size() { return disk().size(m_descriptor); }
std::int64_t PosixFile::tell() { return disk().tell(m_descriptor); }
bool PosixFile::seek(std::int64_t pos) { return disk().seek(m_descriptor, pos); }
std::uint64_t PosixFile::read(void* buffer, std::uint64_t count) { return disk().read(m_descriptor, buffer, count); }
std::uint64_t PosixFile::write(const void*, std::uint64_t) { return 0; }

void* PosixFile::nativeHandle() const {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(m_descriptor));
}

}  // namespace fileio
