// The part of the page about checks, group by group.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace importhost::validate {

// Groups and checks with something bad first and open, what passed folded. Takes a report's document.
std::string checkList(const nlohmann::ordered_json& document);

// A link for every check that went wrong; empty when none did.
std::string badCheckLinks(const nlohmann::ordered_json& document);

}  // namespace importhost::validate
