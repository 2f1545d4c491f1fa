// What came of a replay, for people and for other programs.
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
    std::optional<std::string> skipped;         // why it was not made
    csSDK_int32 result = 0;                     // now
    replay::MessageDiff messages;

    bool resultDiffers() const { return !skipped && logged->result && *logged->result != result; }
    bool lacksResult() const { return !logged->result && !logged->hasNoResult(); }
};

struct ReplayTotals {
    std::size_t replayed = 0;
    std::size_t skipped = 0;
    std::size_t results = 0;                    // that differ
    std::size_t messages = 0;                   // calls whose messages differ
    std::size_t withoutResult = 0;              // replayed calls that the log does not tell the end of

    bool anyDifference() const { return results + messages > 0; }
};

struct ReplayReport {
    std::filesystem::path logFile;
    const replay::RecordedLog& log;
    const replay::FileMap& files;
    std::vector<std::string> played;            // sentences on how it was played
    std::vector<ReplayedCall> calls;
    bool comparesMessages = false;
    std::vector<std::string> remarks;           // of the end

    ReplayTotals totals() const;
};

// Before the calls: the log, its files, the played host.
std::string headText(const ReplayReport& report);

// A call's line comes in two parts, so that a call that never returns is seen:
// "    12  imGetInfo8 clip.avi, stream 0: " and "imNoErr (0)". A skipped one has no second part.
std::string callText(const ReplayedCall& call);
std::string resultText(const ReplayedCall& call);

// After the calls: messages that differ, what was skipped and assumed, totals.
std::string tailText(const ReplayReport& report);

nlohmann::ordered_json asJson(const ReplayReport& report);

}  // namespace importhost
