// Samples that a check writes for itself, beside those of the run. Inner header.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

#include <functional>
#include <string>

namespace importhost::validate {

// Why a check is skipped that needs a sample of its own beside the user's files.
inline constexpr char kOwnSamplesAreForeign[] =
    "the codec library at hand does not import this program's own samples";

// Writes a file into the check's folder, its bytes changed first. Throws std::runtime_error when it cannot be written.
Clip writeOwn(const CheckRun& run, const std::string& name, const aviwriter::SampleOptions& options,
              const std::function<void(aviwriter::Bytes&)>& change = nullptr);

}  // namespace importhost::validate
