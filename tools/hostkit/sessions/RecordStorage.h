// Host records as the plug-in gets them: zeroed, as long as the played host's version makes them, with guard bytes
// around them, and with a memory of what they held before the call.
#pragma once

#include "hostkit/host/GuardedBlock.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace hostkit {

struct ByteRange {
    std::size_t offset = 0;
    std::size_t size = 0;

    friend bool operator==(const ByteRange&, const ByteRange&) = default;
};

// "2-5 34-41", or "nothing".
std::string describe(const std::vector<ByteRange>& ranges);

// A copy of a packed record's member. Members may lie at odd addresses, so nothing that takes a reference, such as
// EXPECT_EQ or std::min, may be given the member itself.
template <class T>
T valueOf(T member) {
    return member;
}

class RecordStorage {
public:
    explicit RecordStorage(std::size_t size) : m_block(size, 0), m_before(size, 0) {}

    void* data() { return m_block.data(); }
    const void* data() const { return m_block.data(); }
    std::size_t size() const { return m_block.size(); }

    // Takes the present content as the one before the call.
    void remember();

    // The bytes that differ from the remembered ones, in order, neighbours joined. A byte that was written with the
    // value it had is not seen; to see it, fill it with another value before remember().
    std::vector<ByteRange> changes() const;

    bool guardsAreIntact() const { return m_block.guardsAreIntact(); }

private:
    GuardedBlock m_block;
    std::vector<std::uint8_t> m_before;
};

// A record of type T at the start of storage that may be longer.
template <class T>
class HostRecord : public RecordStorage {
public:
    explicit HostRecord(std::size_t size = sizeof(T)) : RecordStorage(std::max(size, sizeof(T))) {}

    T* get() { return static_cast<T*>(data()); }
    const T* get() const { return static_cast<const T*>(data()); }
    T* operator->() { return get(); }
    const T* operator->() const { return get(); }
    T& operator*() { return *get(); }
    const T& operator*() const { return *get(); }
};

}  // namespace hostkit
