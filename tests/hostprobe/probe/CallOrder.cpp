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
    m_isAdmitted = !life.hadShutdown;
    if (life.hadShutdown) {
        complain(Sentence::AfterShutdown, {name});
    } else if (isInit && life.hadInit) {
        complain(Sentence::InitTwice);
    } else if (!isInit && !life.hadCalls) {
        complain(Sentence::InitNotFirst, {name});
    } else if (isShutdown && life.running > 0) {
        complain(Sentence::ShutdownDuringCall);
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
