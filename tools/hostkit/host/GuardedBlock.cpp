#include "hostkit/host/GuardedBlock.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr std::uint8_t kGuard = 0xFD;

bool isGuard(std::uint8_t byte) { return byte == kGuard; }

}  // namespace

GuardedBlock::GuardedBlock(std::size_t size, std::uint8_t fill)
    : m_size(size), m_storage(size + 2 * kGuardBytes + kAlignment, kGuard) {
    const auto start = reinterpret_cast<std::uintptr_t>(m_storage.data() + kGuardBytes);
    m_offset = kGuardBytes + (kAlignment - start % kAlignment) % kAlignment;
    std::fill_n(data(), m_size, fill);
}

// A copy lies at another address, so its offset may differ.
GuardedBlock::GuardedBlock(const GuardedBlock& other) : GuardedBlock(other.m_size, 0) {
    std::copy_n(other.data() - kGuardBytes, other.m_size + 2 * kGuardBytes, data() - kGuardBytes);
}

GuardedBlock& GuardedBlock::operator=(const GuardedBlock& other) {
    if (this != &other) {
        *this = GuardedBlock(other);
    }
    return *this;
}

bool GuardedBlock::guardsAreIntact() const {
    return std::all_of(data() - kGuardBytes, data(), isGuard) &&
           std::all_of(data() + m_size, data() + m_size + kGuardBytes, isGuard);
}

}  // namespace hostkit
