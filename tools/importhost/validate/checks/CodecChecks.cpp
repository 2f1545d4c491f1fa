#include "importhost/validate/Groups.h"

namespace importhost::validate {

std::span<const Check> codecChecks() { return {}; }

}  // namespace importhost::validate
