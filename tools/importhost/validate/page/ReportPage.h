// The report of a run as one HTML page that needs nothing beside it and runs nothing.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace importhost::validate {

// UTF-8. Takes a report's document; what is missing in it is left out.
std::string reportPage(const nlohmann::ordered_json& document);

// "The plug-in failed 2 of 42 checks."
std::string verdictSentence(const nlohmann::ordered_json& document);

}  // namespace importhost::validate
