#include "importhost/bench/Statistics.h"

#include <algorithm>
#include <numeric>

namespace importhost::bench {

Summary summaryOf(std::vector<double> milliseconds) {
    if (milliseconds.empty()) {
        return {};
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    const std::size_t count = milliseconds.size();
    Summary summary;
    summary.count = count;
    summary.median = (milliseconds[(count - 1) / 2] + milliseconds[count / 2]) / 2.0;
    summary.p95 = milliseconds[(95 * count + 99) / 100 - 1];
    summary.worst = milliseconds.back();
    summary.total = std::accumulate(milliseconds.begin(), milliseconds.end(), 0.0);
    return summary;
}

}  // namespace importhost::bench
