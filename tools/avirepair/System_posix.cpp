#include "avirepair/System.h"

#include <unistd.h>

namespace avirepair {

void useUtf8Output() {}

bool errorsGoToATerminal() { return isatty(STDERR_FILENO) != 0; }

}  // namespace avirepair
