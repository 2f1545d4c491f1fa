#include "fileio/PosixFile.h"

#include "text/Utf.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fileio {

static_assert(sizeof(off_t) == 8, "files beyond 2 GiB are the rule");

namespace {

// Below every system's limit for one call (Linux moves at most 2 GiB less a page).
constexpr std::size_t kLargestTransfer = std::size_t{1} << 30;

int openFlags(std::uint32_t mode) {
    // Otherwise opening a pipe would wait for its other end before it could be refused.
    constexpr int always = O_CLOEXEC | O_NONBLOCK;
    if (!(mode & kOpenWrite)) {
        return O_RDONLY | always;
    }
    // The file is emptied only after it is locked: a failed open must not change it.
    return ((mode & kOpenRead) ? O_RDWR : O_WRONLY) | O_CREAT | always;
}

bool isRegular(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

// Writers never share, so only readers that share can have a file open together.
bool lockAsShared(int descriptor, std::uint32_t mode) {
    const bool together = (mode & kOpenShareRead) && !(mode & kOpenWrite);
    return flock(descriptor, (together ? LOCK_SH : LOCK_EX) | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool prepare(int descriptor, std::uint32_t mode) {
    if (!isRegular(descriptor) || !lockAsShared(descriptor, mode)) {
        return false;
    }
    return !(mode & kOpenWrite) || ftruncate(descriptor, 0) == 0;
}

// Moves the low 32 bits of `count` with `transfer`, in one call unless the system's limit requires more.
template <typename Transfer>
std::uint64_t transferAll(std::uint64_t count, Transfer transfer) {
    const std::uint64_t wanted = static_cast<std::uint32_t>(count);
    std::uint64_t done = 0;
    while (done < wanted) {
        const std::size_t part = static_cast<std::size_t>(std::min<std::uint64_t>(wanted - done, kLargestTransfer));
        const ssize_t moved = transfer(done, part);
        if (moved < 0 && errno == EINTR) {
            continue;
        }
        if (moved < 0) {
            break;
        }
        done += static_cast<std::uint64_t>(moved);
        if (static_cast<std::size_t>(moved) < part) {
            break;
        }
    }
    return done;
}

}  // namespace

PosixFile::~PosixFile() {
    PosixFile::close();
}

bool PosixFile::open(const char* pathUtf8, std::uint32_t mode) {
    if (m_descriptor != -1) {
        close();
    }
    if (!(mode & (kOpenRead | kOpenWrite))) {
        return false;
    }
    const int descriptor = ::open(pathUtf8, openFlags(mode), 0666);
    if (descriptor == -1) {
        return false;
    }
    if (!prepare(descriptor, mode)) {
        ::close(descriptor);
        return false;
    }
    m_descriptor = descriptor;
    return true;
}

bool PosixFile::open(const char16_t* path, std::uint32_t mode) {
    return open(utf8FromUtf16(path).c_str(), mode);
}

void PosixFile::close() {
    if (m_descriptor != -1) {
        ::close(m_descriptor);
    }
    m_descriptor = -1;
}

std::int64_t PosixFile::size() {
    struct stat status {};
    return fstat(m_descriptor, &status) == 0 ? status.st_size : 0;
}

std::int64_t PosixFile::tell() {
    return std::max<std::int64_t>(lseek(m_descriptor, 0, SEEK_CUR), 0);
}

bool PosixFile::seek(std::int64_t pos) {
    return lseek(m_descriptor, pos, SEEK_SET) != -1;
}

std::uint64_t PosixFile::read(void* buffer, std::uint64_t count) {
    auto* bytes = static_cast<unsigned char*>(buffer);
    return transferAll(count, [&](std::uint64_t done, std::size_t part) {
        return ::read(m_descriptor, bytes + done, part);
    });
}

std::uint64_t PosixFile::write(const void* buffer, std::uint64_t count) {
    const auto* bytes = static_cast<const unsigned char*>(buffer);
    return transferAll(count, [&](std::uint64_t done, std::size_t part) {
        return ::write(m_descriptor, bytes + done, part);
    });
}

void* PosixFile::nativeHandle() const {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(m_descriptor));
}

}  // namespace fileio
