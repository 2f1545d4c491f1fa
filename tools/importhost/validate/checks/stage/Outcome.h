// What came of a call: its result, and one number for all that it delivered. Equal deliveries have equal numbers, in
// this run and in others of the plug-in; addresses in a record do not count.
#pragma once

#include "hostkit/sessions/AsyncSession.h"
#include "importhost/validate/framework/CheckRun.h"

#include <cstdint>
#include <string>
#include <vector>

namespace importhost::validate {

struct Outcome {
    csSDK_int32 result = 0;
    std::uint64_t digest = 0;           // 0 for a frame or a description that was not delivered

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

Outcome outcomeOf(const hostkit::FrameAnswer& answer);
Outcome outcomeOf(const hostkit::AsyncFrameAnswer& answer);
Outcome outcomeOf(const hostkit::Answer<imFileInfoRec8>& answer);
Outcome outcomeOf(const hostkit::AudioAnswer& answer);
Outcome outcomeOf(const hostkit::AnalysisAnswer& answer);
Outcome outcomeOf(const hostkit::DataRateAnswer& answer);       // its two calls as one
Outcome outcomeOf(const hostkit::LayoutAnswer& answer);

// Fails unless both are the same. `usual` is the outcome of the same call earlier.
bool expectUsual(CheckRun& run, const std::string& what, const Outcome& found, const Outcome& usual);

}  // namespace importhost::validate
