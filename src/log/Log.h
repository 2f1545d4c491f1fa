// The diagnostic log: one printf-style call for the whole plug-in. Off unless the user's switch turns it on; while off
// a call costs one flag test and evaluates none of its arguments.
#pragma once

#include "log/LogAttributes.h"

#include <atomic>

class LogWriter;

// Constant-initialised and without a destructor, so that lines may be written from the first static constructor to the
// last static destructor of the module.
struct LogSettings {
    std::atomic<bool> enabled{false};
    std::atomic<LogWriter*> logger{nullptr};   // owned; null until the first line
    const char* name = "quorvane_pr";          // the prefix of file names
    bool console = false;                      // mirror lines to a console window
};
extern constinit LogSettings logSettings;

// Writes one line: Log(format, arguments...). A macro so that nothing is built for a log that is off; include headers
// that have a function of this name first. May be called on any thread. Never reports a failure.
#define Log(...)                         \
    do {                                 \
        if (LogEnabled()) [[unlikely]] { \
            WriteLogLine(__VA_ARGS__);   \
        }                                \
    } while (false)

// Whether lines are written at all: for work that only a log needs.
inline bool LogEnabled() {
    return logSettings.enabled.load(std::memory_order_relaxed);
}

// What Log calls while the log is on: creates the writer at the first line, then writes.
LOG_PRINTF_FORMAT(1, 2) LOG_RARELY_CALLED
void WriteLogLine(const char* format, ...) noexcept;

// Sets the name that log files begin with and the switches' defaults. Called once, at module load.
void ConfigureLog(const char* name, bool enabled, bool console);

// Turns the log on if the user's switch says so; never turns it off.
void ReadLogSwitch();

// From now on a line that another thread stands in the way of is dropped: at the end of a process that thread may be
// gone, with the lock. Called once, first thing at unload.
void StopWaitingForLog();

// Writes the closing line and destroys the writer, if there is one. A later line opens a new file.
void CloseLog();
