// How a plug-in reads files on Windows.
#include "hostkit/watch/CallSpy.h"

#include <windows.h>

namespace hostkit {

namespace {

using ReadFunction = BOOL(WINAPI*)(HANDLE, LPVOID, DWORD, LPDWORD, LPOVERLAPPED);

void* trueRead = nullptr;

BOOL WINAPI spiedReadFunction(HANDLE file, LPVOID buffer, DWORD count, LPDWORD done, LPOVERLAPPED overlapped) {
    SpiedCall& reads = currentCallSpy().reads();
    if (reads.isLeftOut()) {
        reads.add(buffer, count, 0);
        if (done != nullptr) {
            *done = count;
        }
        return TRUE;
    }
    const std::uint64_t start = nanosecondsNow();
    const BOOL result = reinterpret_cast<ReadFunction>(trueRead)(file, buffer, count, done, overlapped);
    reads.add(buffer, count, nanosecondsNow() - start);
    return result;
}

}  // namespace

SpiedRead spiedRead() { return {"ReadFile", reinterpret_cast<void*>(&spiedReadFunction), &trueRead}; }

}  // namespace hostkit
