#include "importhost/System.h"

#include <unistd.h>

namespace importhost {

void useUtf8Output() {}

bool errorsGoToATerminal() { return isatty(STDERR_FILENO) != 0; }

}  // namespace importhost
