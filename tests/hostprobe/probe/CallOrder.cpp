#include "probe/CallOrder.h"

#include "probe/Complaints.h"

#include <mutex>

namespace hostprobe {

namespace {

struct Life {
    std::mutex mutex;
    int running = 0;
    bool hadCalls = false;
    bool hadInit = false;
    bool hadShutdown = false;
};

Life life;

}  // namespace

RunningCall::RunningCall(const std::string& name) {
    const bool isInit = name == "imInit";
    const bool isShutdown = name == "imShutdown";
    countCall();
    const std::lock_guard lock(life.mutex);
    m_isAdmitted = expect(!life.hadShutdown, Sentence::AfterShutdown, {name});
    if (m_isAdmitted) {
        expect(!isInit || !life.hadInit, Sentence::InitTwice);
        expect(isInit || life.hadCalls, Sentence::InitNotFirst, {name});
        expect(!isShutdown || life.running == 0, Sentence::ShutdownDuringCall);
    }
    ++life.running;
    life.hadCalls = true;
    life.hadInit = life.hadInit || isInit;
    life.hadShutdown = life.hadShutdown || isShutdown;
}

RunningCall::~RunningCall() {
    const std::lock_guard lock(life.mutex);
    --life.running;
}

}  // namespace hostprobe
