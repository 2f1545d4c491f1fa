#include "importhost/validate/Groups.h"

namespace importhost::validate {

std::span<const Check> refusingHostChecks() { return {}; }

}  // namespace importhost::validate
