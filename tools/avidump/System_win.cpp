#include "avidump/System.h"

#include <cstdio>

#include <fcntl.h>
#include <io.h>

namespace avidump {

void useBinaryOutput() {
    _setmode(_fileno(stdout), _O_BINARY);
}

}  // namespace avidump
