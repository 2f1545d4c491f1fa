// Dates and durations of a run, for people.
#pragma once

#include <chrono>
#include <string>

namespace importhost::validate {

using RunClock = std::chrono::system_clock;

// UTC, "2024-05-06 07:08".
std::string dateText(RunClock::time_point time);

// "0.31 s", "12.4 s", "3 min 05 s".
std::string durationText(double seconds);

}  // namespace importhost::validate
