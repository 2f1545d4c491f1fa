// The calls of Windows by which a plug-in reads files.
#include "hostkit/watch/DiskFaults.h"

#include <windows.h>

namespace hostkit {

namespace {

void* trueOpen = nullptr;
void* trueSeek = nullptr;
void* trueRead = nullptr;
void* trueSize = nullptr;

template <class Function>
Function* as(void* address) {
    return reinterpret_cast<Function*>(address);
}

BOOL deviceError() {
    SetLastError(ERROR_IO_DEVICE);
    return FALSE;
}

HANDLE WINAPI faultyOpen(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                         DWORD flags, HANDLE pattern) {
    if (currentDiskFaults().onCall(DiskCall::Open)) {
        deviceError();
        return INVALID_HANDLE_VALUE;
    }
    return as<decltype(CreateFileW)>(trueOpen)(path, access, share, security, disposition, flags, pattern);
}

BOOL WINAPI faultySeek(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER position, DWORD origin) {
    if (currentDiskFaults().onCall(DiskCall::Seek)) {
        return deviceError();
    }
    return as<decltype(SetFilePointerEx)>(trueSeek)(file, distance, position, origin);
}

std::int64_t positionOf(HANDLE file) {
    LARGE_INTEGER position{};
    SetFilePointerEx(file, LARGE_INTEGER{}, &position, FILE_CURRENT);
    return position.QuadPart;
}

BOOL WINAPI faultyRead(HANDLE file, LPVOID buffer, DWORD count, LPDWORD done, LPOVERLAPPED overlapped) {
    DiskFaults& disk = currentDiskFaults();
    const DiskFaults::ReadFate fate = disk.onRead(count, disk.needsPosition() ? positionOf(file) : 0);
    if (fate.isError) {
        if (done) {
            *done = 0;
        }
        return deviceError();
    }
    const BOOL succeeded =
        as<decltype(ReadFile)>(trueRead)(file, buffer, static_cast<DWORD>(fate.bytes), done, overlapped);
    const DWORD error = GetLastError();         // the plug-in may ask for it; counting must not change it
    disk.onReadDone(succeeded && done ? *done : 0);
    SetLastError(error);
    return succeeded;
}

BOOL WINAPI faultySize(HANDLE file, PLARGE_INTEGER size) {
    if (currentDiskFaults().onCall(DiskCall::Size)) {
        return deviceError();
    }
    return as<decltype(GetFileSizeEx)>(trueSize)(file, size);
}

template <class Function>
void* pointer(Function* function) {
    return reinterpret_cast<void*>(function);
}

}  // namespace

std::vector<DiskFunction> diskFunctions() {
    return {
        {DiskCall::Open, "CreateFileW", pointer(faultyOpen), &trueOpen},
        {DiskCall::Seek, "SetFilePointerEx", pointer(faultySeek), &trueSeek},
        {DiskCall::Read, "ReadFile", pointer(faultyRead), &trueRead},
        {DiskCall::Size, "GetFileSizeEx", pointer(faultySize), &trueSize},
    };
}

}  // namespace hostkit
