#include "importhost/validate/Groups.h"

namespace importhost::validate {

std::span<const Check> exceptionChecks() { return {}; }

}  // namespace importhost::validate
