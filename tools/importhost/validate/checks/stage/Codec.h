// The controls of the codec library that the plug-in loaded, when it is one that can be made to fail.
#pragma once

#include "importhost/validate/checks/stage/PlayedPlugin.h"

#include "standin/Control.h"

#include <optional>

namespace importhost::validate {

class Codec {
public:
    // The plug-in must be loaded. Skips the check when its codec has no controls. Counts from zero.
    explicit Codec(CheckRun& run);
    ~Codec() { m_reset(); }             // the codec is well again
    Codec(const Codec&) = delete;
    Codec& operator=(const Codec&) = delete;

    // Whether the codec at hand has controls.
    static bool isControllable();

    // What the codec at hand has counted; nothing when none is loaded that counts.
    static std::optional<StandinCounters> counted();

    StandinCounters counters() const;
    void reset() { m_reset(); }
    void fail(std::uint32_t function, std::uint32_t nth, std::uint32_t times);
    void visit(std::uint32_t function, void (*visitor)(void*), void* context) { m_visit(function, visitor, context); }
    void answer(std::uint32_t function, std::uint32_t width, std::uint32_t height, std::uint32_t type) {
        m_answer(function, width, height, type);
    }

    // What is held now: "1 instance, 1 session, 1 initialisation".
    std::string heldText() const;

private:
    void (*m_counters)(StandinCounters*) = nullptr;
    void (*m_reset)() = nullptr;
    decltype(&standin_fail) m_fail = nullptr;
    decltype(&standin_visit) m_visit = nullptr;
    decltype(&standin_answer) m_answer = nullptr;
};

// "quorvane_open".
const char* codecFunctionName(std::uint32_t function);

}  // namespace importhost::validate
