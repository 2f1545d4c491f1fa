// Statistics of measured times.
#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

namespace importhost::bench {

struct Summary {
    std::size_t count = 0;
    double median = 0.0;            // all in milliseconds; zero if there are no times
    double p95 = 0.0;               // 95 of 100 took no longer
    double worst = 0.0;
    double total = 0.0;

    // Requests per second; 0 if they took no time.
    double perSecond() const { return total > 0.0 ? 1000.0 * static_cast<double>(count) / total : 0.0; }
};

Summary summaryOf(std::vector<double> milliseconds);

class Stopwatch {
public:
    double milliseconds() const {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

}  // namespace importhost::bench
