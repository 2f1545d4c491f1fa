// Writes log lines to a new file of its own, and to a console window if asked. Lines are written whole, from any
// thread. A writer whose file could not be opened drops its lines.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <mutex>

class LogWriter {
public:
    // Opens a file that did not exist before, named after `name` and the time, and writes the opening lines.
    LogWriter(const char* name, bool console);

    // Writes the closing line and closes the file.
    ~LogWriter();

    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;

    // Writes "[time] [thread] message" as one line. Throws std::bad_alloc when there is no memory for the line.
    void writeLine(const char* format, std::va_list arguments);

private:
    void open(const char* name, bool console);
    void writeText(const char* format, ...);

    std::FILE* m_file = nullptr;
    bool m_console = false;
    std::mutex m_lock;
};
