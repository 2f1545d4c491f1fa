#include "importhost/validate/Groups.h"

namespace importhost::validate {

std::span<const Check> frameChecks() { return {}; }

}  // namespace importhost::validate
