#include "importhost/validate/Groups.h"

namespace importhost::validate {

std::span<const Check> diskChecks() { return {}; }

}  // namespace importhost::validate
