#include "avidump/System.h"

namespace avidump {

void useBinaryOutput() {}

}  // namespace avidump
