#include "hostkit/system/Interrupt.h"

#include <csignal>

namespace hostkit {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void noteInterrupt(int signal) {
    interrupted = 1;
    std::signal(signal, SIG_DFL);
}

}  // namespace

void catchInterrupts() {
    std::signal(SIGINT, noteInterrupt);
    std::signal(SIGTERM, noteInterrupt);
}

bool wasInterrupted() { return interrupted != 0; }

}  // namespace hostkit
