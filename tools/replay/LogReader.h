// Reads a log of the plug-in back into calls.
//
// Lines of several threads are separated by their thread numbers. Lines of a background decode belong to the call that
// requested the frame. A log may end anywhere and contain anything: what is not understood is counted, not guessed.
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
    Importer,       // the plug-in's entry; `selector` is an imSelector
    Async,          // the entry of an asynchronous importer; `selector` is an aiSelector
};

struct LoggedCall {
    Entry entry = Entry::Importer;
    csSDK_int32 selector = 0;
    std::string name;                           // "imGetInfo8", "aiGetFrame"; "????" if the plug-in does not know it
    std::size_t line = 0;                       // in the file, from 1
    std::vector<std::string> messages;          // between its first line and its result, without times and threads
    std::vector<std::string> decode;            // messages of the background decode that it started
    std::optional<csSDK_int32> result;          // empty if not in the log

    // The end of an asynchronous importer is the only call whose result the plug-in does not log.
    bool hasNoResult() const { return entry == Entry::Async && selector == aiClose; }
};

struct RecordedLog {
    std::string application;                    // the program that loaded the plug-in; empty if unknown
    std::vector<LoggedCall> calls;              // in the order in which they began
    std::size_t threads = 0;
    bool isComplete = false;                    // its last line is present
    std::vector<std::string> remarks;           // complete sentences about what was skipped
};

// Limits of a log. A day's work in the editor is far below these.
struct LogLimits {
    std::size_t lineBytes = 64 * 1024;          // the rest of a longer line is dropped
    std::size_t keptBytes = 256 * 1024 * 1024;  // calls and messages together, including overhead
};

// Thrown if it is not a log of the plug-in.
struct NotALog : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Reads one run's log; a second one in the same stream is not read. Throws NotALog.
RecordedLog readLog(std::istream& in, const LogLimits& limits = {});

}  // namespace replay
