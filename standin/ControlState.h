// The library's side of the control interface: counts calls and decides which ones fail.
#pragma once

#include "codec/QuorvaneApi.h"
#include "standin/Control.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>

namespace standin {

// All members are thread-safe.
class ControlState {
public:
    // Counts a call; returns the failure code ordered for it, or 0. Without orders, costs one atomic read.
    std::uint32_t enter(StandinFunction function);
    void countFailure(StandinFunction function) { ++m_failures[function]; }
    void countOverlap() { ++m_overlappingCalls; }
    void countCloseWithSession() { ++m_closesWithSession; }
    void countUnpreparedOutput() { ++m_unpreparedOutputs; }

    // Calls the visitor ordered for this function, if any.
    void visit(StandinFunction function);

    // Replaces the true answer by the one a test ordered.
    void changeAnswer(StandinFunction function, QuorvaneFormat& answer);

    bool orderFailure(std::uint32_t function, std::uint32_t nth, std::uint32_t count, std::uint32_t code);
    bool orderVisit(std::uint32_t function, void (*visitor)(void*), void* context);
    bool orderAnswer(std::uint32_t function, std::uint32_t width, std::uint32_t height, std::uint32_t type);
    void reset();

    // Writes the counters of this class, not the current state of the library.
    void read(StandinCounters& out) const;

private:
    struct FailureOrder {
        std::uint32_t callsBefore = 0;
        std::uint32_t callsToFail = 0;
        std::uint32_t code = 0;
    };
    struct VisitOrder {
        void (*visitor)(void*) = nullptr;
        void* context = nullptr;
    };
    struct AnswerOrder {
        std::uint32_t width = kStandinUnchanged;
        std::uint32_t height = kStandinUnchanged;
        std::uint32_t type = kStandinUnchanged;
    };
    using Counts = std::array<std::atomic<std::uint32_t>, kStandinFunctionCount>;

    std::uint32_t takeFailure(StandinFunction function);

    Counts m_calls{};
    Counts m_failures{};
    std::atomic<std::uint32_t> m_overlappingCalls{0};
    std::atomic<std::uint32_t> m_closesWithSession{0};
    std::atomic<std::uint32_t> m_unpreparedOutputs{0};
    std::atomic<bool> m_hasOrders{false};   // true if any of the orders below is set
    std::mutex m_mutex;
    std::array<FailureOrder, kStandinFunctionCount> m_failureOrders;   // guarded by m_mutex
    std::array<VisitOrder, kStandinFunctionCount> m_visitOrders;       // guarded by m_mutex
    std::array<AnswerOrder, kStandinFunctionCount> m_answerOrders;     // guarded by m_mutex
};

ControlState& control();

}  // namespace standin
