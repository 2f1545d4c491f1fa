// The list of all groups of checks, and what is looked up in it.
#pragma once

#include "importhost/validate/framework/Check.h"

#include <vector>

namespace importhost::validate {

// All of them, in the order in which they run and are told of.
const std::vector<CheckGroup>& checkGroups();

// Null when there is none of that id.
const Check* findCheck(std::string_view id);

// The name of the group that the check is in; empty for one of no group.
std::string_view groupOf(const Check& check);

// Those up to `level` whose id fits `pattern`, where * stands for any text; an empty pattern fits all.
std::vector<const Check*> selectChecks(int level, std::string_view pattern);

}  // namespace importhost::validate
