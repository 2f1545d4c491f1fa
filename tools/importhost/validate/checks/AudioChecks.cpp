#include "importhost/validate/Groups.h"

namespace importhost::validate {

std::span<const Check> audioChecks() { return {}; }

}  // namespace importhost::validate
