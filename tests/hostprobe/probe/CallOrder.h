// The life of the whole library: imInit first, imShutdown last and alone.
#pragma once

#include <string>

namespace hostprobe {

// One call of either entry, from its start to its end. Safe on any thread.
class RunningCall {
public:
    explicit RunningCall(const std::string& name);
    ~RunningCall();
    RunningCall(const RunningCall&) = delete;
    RunningCall& operator=(const RunningCall&) = delete;

    // False after shutdown: the call must do nothing.
    bool isAdmitted() const { return m_isAdmitted; }

private:
    bool m_isAdmitted = false;
};

}  // namespace hostprobe
