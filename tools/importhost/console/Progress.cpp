#include "importhost/console/Progress.h"

#include "importhost/console/System.h"

#include <cstdio>

namespace importhost {

namespace {

constexpr std::int64_t kCells = 30;

}  // namespace

Progress::Progress(std::string what, std::int64_t total)
    : m_what(std::move(what)), m_total(total), m_shown(errorsGoToATerminal()) {}

Progress::~Progress() { clear(); }

void Progress::step() {
    ++m_done;
    if (!m_shown) {
        return;
    }
    const std::string line = bar(m_what, m_done, m_total);
    m_drawn = line.size();
    std::fprintf(stderr, "\r%s", line.c_str());
    std::fflush(stderr);
}

void Progress::clear() {
    if (m_drawn > 0) {
        std::fprintf(stderr, "\r%s\r", std::string(m_drawn, ' ').c_str());
        std::fflush(stderr);
        m_drawn = 0;
    }
}

std::string Progress::bar(const std::string& what, std::int64_t done, std::int64_t total) {
    const std::int64_t whole = total > 0 ? total : 1;
    const auto filled = static_cast<std::size_t>(kCells * done / whole);
    char percent[8] = {};
    std::snprintf(percent, sizeof(percent), "%3d%%", static_cast<int>(100 * done / whole));
    std::string line = what;
    line.append(" [").append(filled, '#').append(static_cast<std::size_t>(kCells) - filled, '.').append("] ");
    return line.append(percent).append("  ").append(std::to_string(done)).append(" of ").append(std::to_string(total));
}

}  // namespace importhost
