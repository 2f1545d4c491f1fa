#include "hostkit/watch/DiskFaults.h"

#include <algorithm>
#include <atomic>
#include <stdexcept>

namespace hostkit {

namespace {

std::atomic<DiskFaults*> current = nullptr;

constexpr std::size_t indexOf(DiskCall call) { return static_cast<std::size_t>(call); }

}  // namespace

const char* diskCallName(DiskCall call) {
    constexpr const char* kNames[] = {"open", "seek", "read", "size"};
    return kNames[indexOf(call)];
}

DiskFaults& currentDiskFaults() { return *current.load(); }

DiskFaults::DiskFaults(const PluginLibrary& library) {
    if (current.load()) {
        throw std::logic_error("Another disk is made to fail already.");
    }
    current = this;
    for (const DiskFunction& function : diskFunctions()) {
        auto hook = std::make_unique<ImportHook>(library.handle(), function.name, function.replacement);
        if (hook->holds()) {
            *function.original = hook->original();
            m_covered[indexOf(function.call)] = true;
            m_hooks.push_back(std::move(hook));
        }
    }
}

DiskFaults::~DiskFaults() {
    m_hooks.clear();
    current = nullptr;
}

bool DiskFaults::covers(DiskCall call) const { return m_covered[indexOf(call)]; }

void DiskFaults::fail(DiskCall call, int nth, int times) { order(call, nth, times, false); }

void DiskFaults::halveReads(int nth, int times) { order(DiskCall::Read, nth, times, true); }

void DiskFaults::order(DiskCall call, int nth, int times, bool halves) {
    if (nth < 1 || times == 0) {
        throw std::invalid_argument("A failure that can never happen was planned.");
    }
    const std::lock_guard lock(m_mutex);
    m_orders[indexOf(call)] = {nth - 1, times, halves};
}

void DiskFaults::endFilesAt(std::int64_t position) {
    const std::lock_guard lock(m_mutex);
    m_end = position;
}

void DiskFaults::clear() {
    const std::lock_guard lock(m_mutex);
    m_orders.fill({});
    m_calls.fill(0);
    m_bytesRead = 0;
    m_disturbed = 0;
    m_end.reset();
}

int DiskFaults::calls(DiskCall call) const {
    const std::lock_guard lock(m_mutex);
    return m_calls[indexOf(call)];
}

std::uint64_t DiskFaults::bytesRead() const {
    const std::lock_guard lock(m_mutex);
    return m_bytesRead;
}

int DiskFaults::disturbed() const {
    const std::lock_guard lock(m_mutex);
    return m_disturbed;
}

bool DiskFaults::needsPosition() const {
    const std::lock_guard lock(m_mutex);
    return m_end.has_value();
}

bool DiskFaults::isDue(Order& order) {
    if (order.times == 0) {
        return false;
    }
    if (order.callsBefore > 0) {
        --order.callsBefore;
        return false;
    }
    order.times -= order.times > 0 ? 1 : 0;
    ++m_disturbed;
    return true;
}

bool DiskFaults::onCall(DiskCall call) {
    const std::lock_guard lock(m_mutex);
    ++m_calls[indexOf(call)];
    return isDue(m_orders[indexOf(call)]);
}

DiskFaults::ReadFate DiskFaults::onRead(std::uint64_t wanted, std::int64_t position) {
    const std::lock_guard lock(m_mutex);
    ++m_calls[indexOf(DiskCall::Read)];
    Order& order = m_orders[indexOf(DiskCall::Read)];
    if (isDue(order)) {
        return {!order.halves, wanted / 2};
    }
    const std::int64_t beforeEnd = m_end ? std::max<std::int64_t>(*m_end - position, 0) : 0;
    const std::uint64_t left = m_end ? static_cast<std::uint64_t>(beforeEnd) : wanted;
    if (left < wanted) {
        ++m_disturbed;
    }
    return {false, std::min(wanted, left)};
}

void DiskFaults::onReadDone(std::uint64_t bytes) {
    const std::lock_guard lock(m_mutex);
    m_bytesRead += bytes;
}

}  // namespace hostkit
