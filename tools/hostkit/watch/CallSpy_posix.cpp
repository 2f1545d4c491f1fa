// How a plug-in reads files on a POSIX system.
#include "hostkit/watch/CallSpy.h"

#include <unistd.h>

namespace hostkit {

namespace {

using ReadFunction = ssize_t (*)(int, void*, std::size_t);

void* trueRead = nullptr;

ssize_t spiedReadFunction(int file, void* buffer, std::size_t count) {
    SpiedCall& reads = currentCallSpy().reads();
    if (reads.isLeftOut()) {
        reads.add(buffer, count, 0);
        return static_cast<ssize_t>(count);
    }
    const std::uint64_t start = nanosecondsNow();
    const ssize_t result = reinterpret_cast<ReadFunction>(trueRead)(file, buffer, count);
    reads.add(buffer, count, nanosecondsNow() - start);
    return result;
}

}  // namespace

SpiedRead spiedRead() { return {"read", reinterpret_cast<void*>(&spiedReadFunction), &trueRead}; }

}  // namespace hostkit
