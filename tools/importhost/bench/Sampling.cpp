#include "importhost/bench/Sampling.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <set>

namespace importhost::bench {

std::vector<std::int64_t> spreadIndexes(std::int64_t total, std::int64_t most) {
    std::vector<std::int64_t> indexes;
    if (total <= most) {
        indexes.resize(static_cast<std::size_t>(std::max<std::int64_t>(total, 0)));
        std::iota(indexes.begin(), indexes.end(), std::int64_t{0});
        return indexes;
    }
    const std::int64_t runs = std::min(kRuns, most);
    const std::int64_t length = most / runs;
    const std::int64_t gaps = std::max<std::int64_t>(runs - 1, 1);
    for (std::int64_t run = 0; run < runs; ++run) {
        const std::int64_t first = (total - length) / gaps * run + (total - length) % gaps * run / gaps;
        for (std::int64_t i = 0; i < length; ++i) {
            indexes.push_back(first + i);
        }
    }
    return indexes;
}

std::vector<std::int64_t> randomIndexes(std::int64_t total, std::int64_t count, std::uint64_t seed) {
    std::mt19937_64 random(seed);       // its numbers are the same in every library, unlike those of distributions
    std::set<std::int64_t> known;
    std::vector<std::int64_t> indexes;
    const auto wanted = static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, std::max<std::int64_t>(total, 0)));
    while (indexes.size() < wanted) {
        const auto drawn = static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(total));
        if (known.insert(drawn).second) {
            indexes.push_back(drawn);
        }
    }
    return indexes;
}

}  // namespace importhost::bench
