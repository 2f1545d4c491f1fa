// What avidump needs from the system, apart from files.
#pragma once

namespace avidump {

// Makes standard output write bytes unchanged, so that lines are the same on every system.
void useBinaryOutput();

}  // namespace avidump
