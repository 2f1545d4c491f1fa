#include "importhost/validate/Groups.h"

namespace importhost::validate {

std::span<const Check> stateChecks() { return {}; }

}  // namespace importhost::validate
