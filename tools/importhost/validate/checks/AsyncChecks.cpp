#include "importhost/validate/Groups.h"

namespace importhost::validate {

std::span<const Check> asyncChecks() { return {}; }

}  // namespace importhost::validate
