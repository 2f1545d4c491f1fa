#include "importhost/console/Program.h"

namespace importhost {

std::string_view programVersion() { return IMPORTHOST_VERSION; }

}  // namespace importhost
