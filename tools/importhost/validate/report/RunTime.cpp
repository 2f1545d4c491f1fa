#include "importhost/validate/report/RunTime.h"

#include <cmath>
#include <cstdio>

namespace importhost::validate {

std::string dateText(RunClock::time_point time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(std::chrono::floor<std::chrono::minutes>(time - day));
    char text[64] = {};
    std::snprintf(text, sizeof(text), "%04d-%02u-%02u %02d:%02d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()));
    return text;
}

std::string durationText(double seconds) {
    char text[64] = {};
    if (seconds < 59.95) {
        std::snprintf(text, sizeof(text), seconds < 9.995 ? "%.2f s" : "%.1f s", seconds);
    } else {
        const auto whole = static_cast<long long>(std::llround(seconds));
        std::snprintf(text, sizeof(text), "%lld min %02d s", whole / 60, static_cast<int>(whole % 60));
    }
    return text;
}

}  // namespace importhost::validate
