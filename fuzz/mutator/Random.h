// Random numbers from the engine's seed: the same seed produces the same mutation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace fuzz {

class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    // SplitMix64: good enough from any seed, also from consecutive ones.
    std::uint64_t next() {
        m_state += 0x9E3779B97F4A7C15u;
        std::uint64_t value = m_state;
        value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9u;
        value = (value ^ value >> 27) * 0x94D049BB133111EBu;
        return value ^ value >> 31;
    }

    // A number from 0 to `bound` - 1; `bound` must not be 0.
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(next() % bound); }

    // True with probability 1 / `times`.
    bool once(std::size_t times) { return below(times) == 0; }

    template <class Container>
    auto& anyOf(Container& container) {
        return container[below(std::size(container))];
    }

private:
    std::uint64_t m_state;
};

}  // namespace fuzz
