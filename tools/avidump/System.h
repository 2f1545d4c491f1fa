// What avidump needs of the system beyond files.
#pragma once

namespace avidump {

/// Makes standard output take bytes as they are: the same lines on every system.
void useBinaryOutput();

}  // namespace avidump
