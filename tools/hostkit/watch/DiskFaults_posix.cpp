// The calls of a POSIX system by which a plug-in reads files.
#include "hostkit/watch/DiskFaults.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>

namespace hostkit {

namespace {

using OpenFunction = int (*)(const char*, int, ...);
using SeekFunction = off_t (*)(int, off_t, int);
using ReadFunction = ssize_t (*)(int, void*, std::size_t);
using SizeFunction = int (*)(int, struct stat*);

void* trueOpen = nullptr;
void* trueOpen64 = nullptr;
void* trueSeek = nullptr;
void* trueSeek64 = nullptr;
void* trueRead = nullptr;
void* trueSize = nullptr;
void* trueSize64 = nullptr;

int ioError() {
    errno = EIO;
    return -1;
}

// The mode counts only when a file may be made.
unsigned modeOf(int flags, va_list arguments) { return (flags & O_CREAT) ? va_arg(arguments, unsigned) : 0; }

int openWith(void* function, const char* path, int flags, unsigned mode) {
    if (currentDiskFaults().onCall(DiskCall::Open)) {
        return ioError();
    }
    return reinterpret_cast<OpenFunction>(function)(path, flags, mode);
}

int faultyOpen(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = modeOf(flags, arguments);
    va_end(arguments);
    return openWith(trueOpen, path, flags, mode);
}

int faultyOpen64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = modeOf(flags, arguments);
    va_end(arguments);
    return openWith(trueOpen64, path, flags, mode);
}

off_t seekWith(void* function, int file, off_t offset, int origin) {
    if (currentDiskFaults().onCall(DiskCall::Seek)) {
        return ioError();
    }
    return reinterpret_cast<SeekFunction>(function)(file, offset, origin);
}

off_t faultySeek(int file, off_t offset, int origin) { return seekWith(trueSeek, file, offset, origin); }
off_t faultySeek64(int file, off_t offset, int origin) { return seekWith(trueSeek64, file, offset, origin); }

ssize_t faultyRead(int file, void* buffer, std::size_t count) {
    DiskFaults& disk = currentDiskFaults();
    const off_t position = disk.needsPosition() ? lseek(file, 0, SEEK_CUR) : 0;
    const DiskFaults::ReadFate fate = disk.onRead(count, position);
    if (fate.isError) {
        return ioError();
    }
    const ssize_t done = reinterpret_cast<ReadFunction>(trueRead)(file, buffer, fate.bytes);
    disk.onReadDone(done > 0 ? static_cast<std::uint64_t>(done) : 0);
    return done;
}

int sizeWith(void* function, int file, struct stat* status) {
    if (currentDiskFaults().onCall(DiskCall::Size)) {
        return ioError();
    }
    return reinterpret_cast<SizeFunction>(function)(file, status);
}

int faultySize(int file, struct stat* status) { return sizeWith(trueSize, file, status); }
int faultySize64(int file, struct stat* status) { return sizeWith(trueSize64, file, status); }

template <class Function>
void* pointer(Function* function) {
    return reinterpret_cast<void*>(function);
}

}  // namespace

std::vector<DiskFunction> diskFunctions() {
    return {
        {DiskCall::Open, "open", pointer(faultyOpen), &trueOpen},
        {DiskCall::Open, "open64", pointer(faultyOpen64), &trueOpen64},
        {DiskCall::Seek, "lseek", pointer(faultySeek), &trueSeek},
        {DiskCall::Seek, "lseek64", pointer(faultySeek64), &trueSeek64},
        {DiskCall::Read, "read", pointer(faultyRead), &trueRead},
        {DiskCall::Size, "fstat", pointer(faultySize), &trueSize},
        {DiskCall::Size, "fstat64", pointer(faultySize64), &trueSize64},
    };
}

}  // namespace hostkit
