#include "Gate.h"

#include <chrono>

namespace {

constexpr std::chrono::minutes kLongest(1);

}  // namespace

void Gate::pass() {
    std::unique_lock lock(m_mutex);
    m_arrived = true;
    m_changed.notify_all();
    m_changed.wait_for(lock, kLongest, [this] { return m_open; });
    m_open = true;
}

bool Gate::waitForArrival() {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, kLongest, [this] { return m_arrived; });
}

void Gate::open() {
    const std::lock_guard lock(m_mutex);
    m_open = true;
    m_changed.notify_all();
}

bool Gate::isOpen() const {
    const std::lock_guard lock(m_mutex);
    return m_open;
}
