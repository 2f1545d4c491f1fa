// Ctrl-C and the order to terminate, for programs that have folders to remove and children to end first.
#pragma once

#include <stdexcept>

namespace hostkit {

// From now on such an order is only noted; a second one ends the process as usual.
void catchInterrupts();

bool wasInterrupted();      // safe on any thread

struct Interrupted : std::runtime_error {
    Interrupted() : std::runtime_error("The run was interrupted.") {}
};

}  // namespace hostkit
