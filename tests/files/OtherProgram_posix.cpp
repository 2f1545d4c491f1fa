#include "files/OtherProgram.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

std::intptr_t openLocked(const std::filesystem::path& path, int flags, int lock) {
    const int file = ::open(path.c_str(), flags | O_CLOEXEC);
    if (file >= 0 && ::flock(file, lock | LOCK_NB) != 0) {
        ::close(file);
        return -1;
    }
    return file;
}

void closeIfOpen(std::intptr_t file) {
    if (file >= 0) {
        ::close(static_cast<int>(file));
    }
}

}  // namespace

OtherReader::OtherReader(const std::filesystem::path& path) : m_file(openLocked(path, O_RDONLY, LOCK_SH)) {}
OtherReader::~OtherReader() { closeIfOpen(m_file); }

OtherWriter::OtherWriter(const std::filesystem::path& path) : m_file(openLocked(path, O_RDWR, LOCK_EX)) {}
OtherWriter::~OtherWriter() { closeIfOpen(m_file); }

std::filesystem::path anyLengthForm(const std::filesystem::path& path) { return path; }
