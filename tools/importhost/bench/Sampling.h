// Selects the parts of a long clip to measure. The same on every system.
#pragma once

#include <cstdint>
#include <vector>

namespace importhost::bench {

inline constexpr std::int64_t kRuns = 8;

// At most `most` (1 or more) of the numbers from 0 to total - 1, in order: all of them, or runs of consecutive numbers
// of equal length, spread evenly from the first number to the last. Runs, because sequential reading is cheaper than
// seeking, and the measurement must show that.
std::vector<std::int64_t> spreadIndexes(std::int64_t total, std::int64_t most);

// `count` different numbers from 0 to total - 1, or all if there are fewer, in a random order that depends on the seed.
std::vector<std::int64_t> randomIndexes(std::int64_t total, std::int64_t count, std::uint64_t seed);

}  // namespace importhost::bench
