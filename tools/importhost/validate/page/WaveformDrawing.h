// The waveform of a stream of sound as a drawing inside the page, a lane for each channel.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace importhost::validate {

// A waveform of a file of a report's document, as markup; with the stream's number where there are several.
std::string waveformMarkup(const nlohmann::ordered_json& waveform, bool isOneOfSeveral);

}  // namespace importhost::validate
