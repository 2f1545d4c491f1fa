// A non-recursive mutex that owns nothing outside itself, for std::lock_guard and std::unique_lock.
//
// On Windows it is a slim lock: MinGW-w64's std::mutex allocates at its first lock and never frees, which would cost
// a little memory for every opened file.
#pragma once

#include <mutex>

#ifdef _WIN32

class Mutex {
public:
    constexpr Mutex() = default;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void lock();
    bool try_lock();
    void unlock();

private:
    void* m_slimLock = nullptr;   // an SRWLOCK, which is one pointer, zero when free
};

#else

using Mutex = std::mutex;

#endif
