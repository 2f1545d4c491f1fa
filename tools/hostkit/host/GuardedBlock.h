// Memory handed to the plug-in, with guard bytes before and behind it that show when it was overrun.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace hostkit {

class GuardedBlock {
public:
    static constexpr std::size_t kGuardBytes = 64;
    static constexpr std::size_t kAlignment = 16;

    // `size` bytes, each `fill`, at an address that is a multiple of kAlignment.
    GuardedBlock(std::size_t size, std::uint8_t fill);
    GuardedBlock(const GuardedBlock& other);
    GuardedBlock& operator=(const GuardedBlock& other);
    GuardedBlock(GuardedBlock&&) noexcept = default;
    GuardedBlock& operator=(GuardedBlock&&) noexcept = default;
    ~GuardedBlock() = default;

    std::uint8_t* data() { return m_storage.data() + m_offset; }
    const std::uint8_t* data() const { return m_storage.data() + m_offset; }
    std::size_t size() const { return m_size; }

    bool guardsAreIntact() const;

private:
    std::size_t m_size;
    std::vector<std::uint8_t> m_storage;
    std::size_t m_offset = 0;
};

}  // namespace hostkit
