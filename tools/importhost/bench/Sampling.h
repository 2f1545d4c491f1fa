// Which parts of a long clip are measured. The same on every system.
#pragma once

#include <cstdint>
#include <vector>

namespace importhost::bench {

inline constexpr std::int64_t kRuns = 8;

// At most `most` (1 or more) of the numbers from 0 to total - 1, in order: all of them if they are that few, otherwise
// runs of neighbours, all of one length, spread evenly from the first number to the last. Runs, because reading on
// costs less than jumping, and must show.
std::vector<std::int64_t> spreadIndexes(std::int64_t total, std::int64_t most);

// As many different numbers from all of 0 to total - 1, but not more than there are, in an order drawn from the seed.
std::vector<std::int64_t> randomIndexes(std::int64_t total, std::int64_t count, std::uint64_t seed);

}  // namespace importhost::bench
