// The diagnostic log: one printf-style call for the whole plug-in. Off unless the user turns it on; while off, a call
// costs one flag test and does not evaluate its arguments.
#pragma once

#include "log/LogAttributes.h"

#include <atomic>

class LogWriter;

// Constant-initialised and without a destructor, so that lines can be written from the first static constructor to the
// last static destructor of the module.
struct LogSettings {
    std::atomic<bool> enabled{false};
    std::atomic<LogWriter*> logger{nullptr};   // owned; null until the first line
    const char* name = "quorvane_pr";          // prefix of file names
    bool console = false;                      // copy lines to a console window
};
extern constinit LogSettings logSettings;

// Writes one line: Log(format, arguments...). A macro so that arguments are not evaluated while the log is off; include
// headers that declare a function of this name first. Thread-safe. Never reports a failure.
#define Log(...)                         \
    do {                                 \
        if (LogEnabled()) [[unlikely]] { \
            WriteLogLine(__VA_ARGS__);   \
        }                                \
    } while (false)

// True if lines are written: guards work that only the log needs.
inline bool LogEnabled() {
    return logSettings.enabled.load(std::memory_order_relaxed);
}

// Called by Log while the log is on: creates the writer on the first line, then writes.
LOG_PRINTF_FORMAT(1, 2) LOG_RARELY_CALLED
void WriteLogLine(const char* format, ...) noexcept;

// Sets the prefix of log file names and the default settings. Called once, at module load.
void ConfigureLog(const char* name, bool enabled, bool console);

// Turns the log on if the user's switch is set; never turns it off.
void ReadLogSwitch();

// From now on, a line that would have to wait for another thread is dropped: at process exit that thread may be gone
// while holding the lock. Called once, at the start of unload.
void StopWaitingForLog();

// Writes the closing line and destroys the writer, if there is one. A later line opens a new file.
void CloseLog();
