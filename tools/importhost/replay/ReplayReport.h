// The report of a replay, as text and as JSON.
#pragma once

#include "replay/FileMap.h"
#include "replay/MessageDiff.h"
#include "replay/Step.h"

#include <nlohmann/json_fwd.hpp>

namespace importhost {

struct ReplayedCall {
    std::size_t number = 0;                     // from 1
    const replay::LoggedCall* logged = nullptr;
    std::string text;
    std::vector<std::string> assumed;
    std::optional<std::string> skipped;         // why the call was not made
    csSDK_int32 result = 0;                     // of the call made now
    replay::MessageDiff messages;

    bool resultDiffers() const { return !skipped && logged->result && *logged->result != result; }
    bool lacksResult() const { return !logged->result && !logged->hasNoResult(); }
};

struct ReplayTotals {
    std::size_t replayed = 0;
    std::size_t skipped = 0;
    std::size_t results = 0;                    // number of results that differ
    std::size_t messages = 0;                   // number of calls whose messages differ
    std::size_t withoutResult = 0;              // replayed calls without a result in the log

    bool anyDifference() const { return results + messages > 0; }
};

struct ReplayReport {
    std::filesystem::path logFile;
    const replay::RecordedLog& log;
    const replay::FileMap& files;
    std::vector<std::string> played;            // sentences about how the calls were made
    std::vector<ReplayedCall> calls;
    bool comparesMessages = false;
    std::vector<std::string> remarks;           // printed at the end

    ReplayTotals totals() const;
};

// Text before the calls: the log, its files, the simulated host.
std::string headText(const ReplayReport& report);

// A call's line is printed in two parts, so that a call that never returns is visible:
// "    12  imGetInfo8 clip.avi, stream 0: " and "imNoErr (0)". A skipped call has no second part.
std::string callText(const ReplayedCall& call);
std::string resultText(const ReplayedCall& call);

// Text after the calls: messages that differ, what was skipped and assumed, totals.
std::string tailText(const ReplayReport& report);

nlohmann::ordered_json asJson(const ReplayReport& report);

}  // namespace importhost
