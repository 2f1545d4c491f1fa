// What the plug-in says and shows of one file, for the report: gathered in a process of its own, which may crash.
#pragma once

#include "importhost/clips/Editor.h"

#include <nlohmann/json_fwd.hpp>

#include <filesystem>
#include <functional>

namespace importhost::validate {

// Facts, contact sheet and waveforms. `told` gets what there is so far after each of these, so that a crash in a later
// one does not take it away. A picture or sound that fails is told by "error" in its place.
void describeClip(Editor& editor, const std::filesystem::path& path,
                  const std::function<void(const nlohmann::ordered_json&)>& told);

}  // namespace importhost::validate
