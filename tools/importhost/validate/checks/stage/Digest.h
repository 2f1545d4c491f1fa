// A number that stands for many bytes, to hold pictures and sound against each other without keeping them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace importhost::validate {

// Eight bytes at a time, because big pictures are digested again and again. What was added in one piece and in several
// may give different numbers.
class Digest {
public:
    Digest& add(const void* bytes, std::size_t count) {
        const auto* next = static_cast<const unsigned char*>(bytes);
        for (; count >= sizeof(std::uint64_t); count -= sizeof(std::uint64_t), next += sizeof(std::uint64_t)) {
            std::uint64_t word = 0;
            std::memcpy(&word, next, sizeof(word));
            mix(word);
        }
        for (; count > 0; --count) {
            mix(*next++);
        }
        return *this;
    }
    std::uint64_t value() const { return m_value; }

private:
    // The shift brings a difference in the topmost bit down, which multiplying alone would leave there.
    void mix(std::uint64_t word) {
        m_value = (m_value ^ word) * 0x100000001B3U;
        m_value ^= m_value >> 29;
    }

    std::uint64_t m_value = 0xCBF29CE484222325U;
};

inline std::uint64_t digestOf(const void* bytes, std::size_t count) { return Digest().add(bytes, count).value(); }

}  // namespace importhost::validate
