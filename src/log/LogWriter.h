// Writes log lines to a new file of its own, and to a console window if asked. Lines are written whole, from any
// thread. A writer whose file could not be opened drops its lines.
#pragma once

#include "log/PrintfFormat.h"

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <mutex>

class LogWriter {
public:
    // Opens a file that did not exist before, named after `name` and the time, and writes the opening lines. What
    // fails on the way leaves a writer that drops its lines.
    LogWriter(const char* name, bool console) noexcept;

    // Writes the closing line and closes the file.
    ~LogWriter();

    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;

    // Writes "[time] [thread] message" as one line. Throws std::bad_alloc when there is no memory for the line.
    void writeLine(const char* format, std::va_list arguments);

private:
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void open(const char* name, bool console);
    LOG_PRINTF_FORMAT(2, 3)
    void writeText(const char* format, ...) noexcept;

    std::unique_ptr<std::FILE, CloseFile> m_file;
    bool m_console = false;
    std::mutex m_lock;
};
