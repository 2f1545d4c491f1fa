// Samples that a check writes for itself, in addition to those of the run.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

#include <functional>
#include <string>

namespace importhost::validate {

// Why a check is skipped that needs a sample of its own beside the user's files.
inline constexpr char kOwnSamplesAreForeign[] =
    "the codec library at hand does not import this program's own samples";

// Writes a sample into the check's folder, its bytes changed by `change`. Throws std::runtime_error if it cannot be
// written.
Clip writeOwn(const CheckRun& run, const std::filesystem::path& name, const aviwriter::SampleOptions& options,
              const std::function<void(aviwriter::Bytes&)>& change = nullptr);

}  // namespace importhost::validate
