// A log that the plug-in wrote, read back into the calls that it tells of.
//
// Lines of several threads are told apart by their numbers. What a background decode logged goes to the call that
// asked for the frame. A log may end anywhere, and may hold anything: what cannot be understood is counted, not guessed.
#pragma once

#include "sdk/SdkAsyncImporter.h"

#include <cstddef>
#include <istream>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace replay {

enum class Entry {
    Importer,       // the plug-in's entry; the selector is an imSelector
    Async,          // the entry of an asynchronous importer; the selector is an aiSelector
};

struct LoggedCall {
    Entry entry = Entry::Importer;
    csSDK_int32 selector = 0;
    std::string name;                           // "imGetInfo8", "aiGetFrame"; "????" for one that the plug-in has not
    std::size_t line = 0;                       // of the file, from 1
    std::vector<std::string> messages;          // between its first line and its result, without times and threads
    std::vector<std::string> decode;            // of the background decode that it started
    std::optional<csSDK_int32> result;          // none: the log does not tell it

    // The end of an asynchronous importer is the one call whose result the plug-in does not log.
    bool hasNoResult() const { return entry == Entry::Async && selector == aiClose; }
};

struct RecordedLog {
    std::string application;                    // that loaded the plug-in; empty when not told
    std::vector<LoggedCall> calls;              // in the order in which they began
    std::size_t threads = 0;
    bool isComplete = false;                    // its last line is there
    std::vector<std::string> remarks;           // whole sentences on what was left out
};

// What a log may cost. A day's work in the editor stays far below these.
struct LogLimits {
    std::size_t lineBytes = 64 * 1024;          // the rest of a longer line is dropped
    std::size_t keptBytes = 256 * 1024 * 1024;  // calls and messages together, with their overhead
};

// It is no log of the plug-in's.
struct NotALog : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Reads one run's log; a second one in the same stream is left. Throws NotALog.
RecordedLog readLog(std::istream& in, const LogLimits& limits = {});

}  // namespace replay
