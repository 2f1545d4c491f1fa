#include "standin/ControlState.h"

#include <utility>

namespace standin {
namespace {

bool takesHandle(std::uint32_t function) {
    return function == kStandinClose || (function >= kStandinGetParam && function < kStandinFunctionCount);
}

// True if the function's answer is a description that can be changed.
bool describes(std::uint32_t function) {
    return function == kStandinDecompressQuery || function == kStandinDecompressBegin;
}

void change(std::uint32_t& field, std::uint32_t ordered) {
    if (ordered != kStandinUnchanged)
        field = ordered;
}

}  // namespace

ControlState& control() {
    static ControlState state;
    return state;
}

std::uint32_t ControlState::enter(StandinFunction function) {
    ++m_calls[function];
    return m_hasOrders ? takeFailure(function) : 0;
}

std::uint32_t ControlState::takeFailure(StandinFunction function) {
    const std::lock_guard lock(m_mutex);
    FailureOrder& order = m_failureOrders[function];
    if (order.callsToFail == 0)
        return 0;
    if (order.callsBefore > 0) {
        --order.callsBefore;
        return 0;
    }
    --order.callsToFail;
    return order.code;
}

void ControlState::visit(StandinFunction function) {
    if (!m_hasOrders)
        return;
    VisitOrder order;
    {
        const std::lock_guard lock(m_mutex);
        order = std::exchange(m_visitOrders[function], {});
    }
    if (order.visitor)
        order.visitor(order.context);
}

void ControlState::changeAnswer(StandinFunction function, QuorvaneFormat& answer) {
    if (!m_hasOrders)
        return;
    const std::lock_guard lock(m_mutex);
    const AnswerOrder& order = m_answerOrders[function];
    change(answer.width, order.width);
    change(answer.height, order.height);
    change(answer.type, order.type);
}

bool ControlState::orderFailure(std::uint32_t function, std::uint32_t nth, std::uint32_t count, std::uint32_t code) {
    if (function >= kStandinFunctionCount || nth == 0 || code == 0)
        return false;
    const std::lock_guard lock(m_mutex);
    m_failureOrders[function] = {.callsBefore = nth - 1, .callsToFail = count, .code = code};
    m_hasOrders = true;
    return true;
}

bool ControlState::orderVisit(std::uint32_t function, void (*visitor)(void*), void* context) {
    if (!takesHandle(function))
        return false;
    const std::lock_guard lock(m_mutex);
    m_visitOrders[function] = {.visitor = visitor, .context = context};
    m_hasOrders = true;
    return true;
}

bool ControlState::orderAnswer(std::uint32_t function, std::uint32_t width, std::uint32_t height,
                               std::uint32_t type) {
    if (!describes(function))
        return false;
    const std::lock_guard lock(m_mutex);
    m_answerOrders[function] = {.width = width, .height = height, .type = type};
    m_hasOrders = true;
    return true;
}

void ControlState::reset() {
    const std::lock_guard lock(m_mutex);
    for (std::size_t i = 0; i < kStandinFunctionCount; ++i) {
        m_calls[i] = 0;
        m_failures[i] = 0;
    }
    m_overlappingCalls = 0;
    m_closesWithSession = 0;
    m_unpreparedOutputs = 0;
    m_failureOrders.fill({});
    m_visitOrders.fill({});
    m_answerOrders.fill({});
    m_hasOrders = false;
}

void ControlState::read(StandinCounters& out) const {
    for (std::size_t i = 0; i < kStandinFunctionCount; ++i) {
        out.calls[i] = m_calls[i];
        out.failures[i] = m_failures[i];
    }
    out.overlappingCalls = m_overlappingCalls;
    out.closesWithSession = m_closesWithSession;
    out.unpreparedOutputs = m_unpreparedOutputs;
}

}  // namespace standin
