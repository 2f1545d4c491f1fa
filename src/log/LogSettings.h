// The log's process-wide settings. Constant-initialised and without a destructor, so that lines may be written from
// the first static constructor to the last static destructor of the module.
#pragma once

#include <atomic>

class LogWriter;

struct LogSettings {
    std::atomic<bool> enabled{false};
    std::atomic<LogWriter*> logger{nullptr};   // owned; null until the first line
    const char* name = "quorvane_pr";          // the prefix of file names
    bool console = false;                      // mirror lines to a console window
};

extern constinit LogSettings logSettings;
