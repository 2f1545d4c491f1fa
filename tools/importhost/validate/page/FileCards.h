// The part of the page about files: facts, contact sheet, waveforms.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace importhost::validate {

// One file of a report's document, as markup: unfolded or with its name alone.
std::string fileCard(const nlohmann::ordered_json& file, bool isOpen);

}  // namespace importhost::validate
