#include "sync/Mutex.h"

#include <windows.h>

static_assert(sizeof(SRWLOCK) == sizeof(void*));

namespace {

SRWLOCK* slimLock(void*& storage) {
    return reinterpret_cast<SRWLOCK*>(&storage);
}

}  // namespace

void Mutex::lock() {
    AcquireSRWLockExclusive(slimLock(m_slimLock));
}

bool Mutex::try_lock() {
    return TryAcquireSRWLockExclusive(slimLock(m_slimLock)) != 0;
}

void Mutex::unlock() {
    ReleaseSRWLockExclusive(slimLock(m_slimLock));
}
